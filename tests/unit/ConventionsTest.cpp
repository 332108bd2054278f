// The conventions of docs/CONVENTIONS.md, with numbers that a transposed matrix or a swapped product does not give.
#include "host/dg/Box.h"
#include "host/dg/Conversion.h"
#include "tests/unit/Values.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>
#include <utility>

namespace {

using dg::DMat33;
using dg::DMat44;
using dg::DPoint3D;
using dg::DVec3;
using dg::FMat33;
using dg::Location;
using values::Near;
using values::Of;
using values::Three;

constexpr double Tolerance = 1e-14;
constexpr double QuarterTurn = std::numbers::pi / 2;

// A third of a turn about (1, 1, 1): X goes to Y, Y to Z, Z to X. All its numbers are exact in binary.
constexpr dg::Quaternion<float> ThirdTurn{0.5F, 0.5F, 0.5F, 0.5F};
constexpr DMat44 Turn = DMat44::Rotation(DPoint3D::ORIGIN, ThirdTurn);
constexpr DMat44 Shift = DMat44::Translation({1, 2, 3});
// The frame turned a quarter about Z; it does not commute with the third turn.
constexpr Location Placed({0, 1, 0}, {-1, 0, 0}, {0, 0, 1}, {10, 20, 30});

constexpr FMat33 Counting({1, 2, 3}, {4, 5, 6}, {7, 8, 10});
constexpr FMat33 Cycle({0, 1, 0}, {0, 0, 1}, {1, 0, 0});

TEST(Conventions, ALocationCarriesFromItsFrameIntoTheWorld) {
    DPoint3D point{1, 2, 3};
    EXPECT_EQ(Of(point *= Placed), (Three{10 - 2, 20 + 1, 30 + 3}));
    DVec3 vector{1, 2, 3};
    EXPECT_EQ(Of(vector *= Placed), (Three{-2, 1, 3}));
}

TEST(Conventions, TheProductConstructorLetsTheFirstMatrixActFirst) {
    const DPoint3D p{10, 20, 30};
    EXPECT_EQ(Of(DMat44(Shift, Turn).MapPoint(p)), (Three{33, 11, 22}));
    EXPECT_EQ(Of(DMat44(Turn, Shift).MapPoint(p)), (Three{31, 12, 23}));
    EXPECT_EQ(Of(DMat44(Turn, Shift).MapDirection({10, 20, 30})), (Three{30, 10, 20}));
}

TEST(Conventions, RotationTimesOrientationTurnsTheFrameAboutItsOwnAxes) {
    EXPECT_EQ(Of(FMat33::Rotation(ThirdTurn) * Placed.GetMat()),
              (std::array<Three, 3>{{{-1, 0, 0}, {0, 0, 1}, {0, 1, 0}}}));
    EXPECT_EQ(Of(Counting * Cycle), (std::array<Three, 3>{{{3, 1, 2}, {6, 4, 5}, {10, 7, 8}}}));
}

TEST(Conventions, ADoubleMatrixMultipliesColumnVectors) {
    EXPECT_EQ(Of(DMat33(Counting) * DVec3(1, 10, 100)), (Three{321, 654, 1087}));
    EXPECT_EQ(Of(DMat33(Placed.GetMat()) * DVec3(5, 6, 7)), (Three{6, -5, 7})) << "world vector in the frame";
}

TEST(Conventions, RotationsAreRightHanded) {
    const struct {
        const char* name;
        DMat44 matrix;
        DVec3 from;
        Three to;
    } rows[] = {
        {"about X, Y goes to Z", DMat44::RotationX(QuarterTurn), DVec3::Y, {0, 0, 1}},
        {"about an axis of length 5", DMat44::Rotation({0, 0, 5}, QuarterTurn), DVec3::X, {0, 1, 0}},
        {"about a zero axis: none", DMat44::Rotation(DVec3::ZERO, 1.0), {1, 2, 3}, {1, 2, 3}},
        {"by a quaternion", Turn, {1, 2, 3}, {3, 1, 2}},
        {"by a quaternion of length above 1", DMat44::Rotation(DPoint3D::ORIGIN, {0, 0, 1, 1}), DVec3::X, {-1, 2, 0}},
    };
    for (const auto& row : rows) {
        EXPECT_THAT(Of(row.matrix.MapDirection(row.from)), Near(row.to, Tolerance)) << row.name;
    }
    EXPECT_EQ(Of(FMat33::Rotation({0, 0, 1, 1})), (std::array<Three, 3>{{{-1, 2, 0}, {-2, -1, 0}, {0, 0, 1}}}));
}

TEST(Conventions, SanitizeKeepsUAndTurnsVAndRebuildsW) {
    Location location({0, 3, 0}, {0, 1, 2}, {7, 7, 7}, {1, 2, 3});
    location.Sanitize();
    EXPECT_EQ(Of(location), (std::array<Three, 4>{{{0, 1, 0}, {0, 0, 1}, {1, 0, 0}, {1, 2, 3}}}));
    Location leftHanded({1, 0, 0}, {0, 1, 0}, {0, 0, -1}, {});
    leftHanded.Sanitize();
    EXPECT_EQ(Of(leftHanded.GetW()), (Three{0, 0, 1}));
}

TEST(Conventions, AMappedBoxEnclosesAllEightCorners) {
    dg::DBox cycled({-1, 0, 0}, {2, 1, 3});
    cycled *= DMat44(Turn, Shift);
    EXPECT_EQ(Of(cycled.min), (Three{1, 1, 3}));
    EXPECT_EQ(Of(cycled.max), (Three{4, 4, 4}));
    EXPECT_EQ(Of(cycled.GetSize()), (Three{3, 3, 1}));

    dg::DBox tilted({0, 0, 0}, {1, 1, 1});
    tilted *= DMat44::Rotation(DVec3::Z, QuarterTurn / 2);
    EXPECT_THAT(Of(tilted.min), Near(Three{-std::numbers::sqrt2 / 2, 0, 0}, Tolerance));
    EXPECT_THAT(Of(tilted.max), Near(Three{std::numbers::sqrt2 / 2, std::numbers::sqrt2, 1}, Tolerance));
}

TEST(Conventions, DoublesBecomeIntegersTowardZeroAndSaturate) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    constexpr std::int32_t highest = std::numeric_limits<std::int32_t>::max();
    constexpr std::int32_t lowest = std::numeric_limits<std::int32_t>::min();
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    const std::pair<double, std::int32_t> rows[] = {{2.9, 2},
                                                    {-2.9, -2},
                                                    {2147483646.9, highest - 1},
                                                    {2147483647.0, highest},
                                                    {2147483648.0, highest},
                                                    {-2147483647.9, lowest + 1},
                                                    {-2147483648.9, lowest},
                                                    {-2147483649.0, lowest},
                                                    {infinity, highest},
                                                    {-infinity, lowest},
                                                    {nan, 0}};
    for (const auto& [value, expected] : rows) {
        EXPECT_EQ(dg::TruncateToInt32(value), expected) << value;
    }
}

TEST(Conventions, IntegerArithmeticWrapsAround) {
    constexpr std::int32_t highest = std::numeric_limits<std::int32_t>::max();
    constexpr std::int32_t lowest = std::numeric_limits<std::int32_t>::min();
    constexpr std::int64_t lowest64 = std::numeric_limits<std::int64_t>::min();
    EXPECT_EQ(dg::WrapAdd(highest, 1), lowest);
    EXPECT_EQ(dg::WrapSubtract(lowest, 1), highest);
    EXPECT_EQ(dg::WrapSubtract(7, 9), -2);
    EXPECT_EQ(dg::WrapSubtract(lowest64, std::int64_t{1}), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(dg::WrapMultiply(65536, 65536), 0);
    EXPECT_EQ(dg::WrapMultiply(46341, 46341), -2147479015);
    EXPECT_EQ(dg::AbsoluteDifference(3, 10), 7U);
    EXPECT_EQ(dg::AbsoluteDifference(0, lowest), 2147483648U);
    EXPECT_EQ(dg::AbsoluteDifference(highest, lowest), 1U) << "wrapped to -1";
}

}  // namespace
