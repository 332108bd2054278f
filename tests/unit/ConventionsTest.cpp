// The conventions of docs/CONVENTIONS.md, with numbers that a transposed matrix or a swapped product does not give;
// and the geometry types at their edges: values without direction, empty boxes, NaN.
#include "host/dg/Box.h"
#include "host/dg/Camera3D.h"
#include "host/dg/Color.h"
#include "host/dg/Conversion.h"
#include "tests/unit/Values.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>
#include <type_traits>
#include <utility>

namespace {

using dg::DBox;
using dg::DBox2D;
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
constexpr double NaN = std::numeric_limits<double>::quiet_NaN();
constexpr double Largest = std::numeric_limits<double>::max();
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

TEST(Conventions, RotationTimesOrientationCarriesWhatIsSeenAlong) {
    EXPECT_EQ(Of(FMat33::Rotation(ThirdTurn) * Placed.GetMat()),
              (std::array<Three, 3>{{{0, 0, 1}, {0, 1, 0}, {-1, 0, 0}}}));
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
    EXPECT_EQ(Of(FMat33::Rotation({0, 0, 1, 1})), (std::array<Three, 3>{{{-1, -2, 0}, {2, -1, 0}, {0, 0, 1}}}));
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
    DBox cycled({-1, 0, 0}, {2, 1, 3});
    cycled *= DMat44(Turn, Shift);
    EXPECT_EQ(Of(cycled.min), (Three{1, 1, 3}));
    EXPECT_EQ(Of(cycled.max), (Three{4, 4, 4}));
    EXPECT_EQ(Of(cycled.GetSize()), (Three{3, 3, 1}));

    DBox tilted({0, 0, 0}, {1, 1, 1});
    tilted *= DMat44::Rotation(DVec3::Z, QuarterTurn / 2);
    EXPECT_THAT(Of(tilted.min), Near(Three{-std::numbers::sqrt2 / 2, 0, 0}, Tolerance));
    EXPECT_THAT(Of(tilted.max), Near(Three{std::numbers::sqrt2 / 2, std::numbers::sqrt2, 1}, Tolerance));
}

TEST(Conventions, DoublesBecomeIntegersTowardZeroAndSaturate) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    constexpr std::int32_t highest = std::numeric_limits<std::int32_t>::max();
    constexpr std::int32_t lowest = std::numeric_limits<std::int32_t>::min();
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
                                                    {NaN, 0}};
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

template <class... Type>
constexpr bool PlainValues = ((std::is_trivially_copyable_v<Type> && std::is_trivially_destructible_v<Type> &&
                               std::is_nothrow_default_constructible_v<Type> && std::is_standard_layout_v<Type>)&&...);
static_assert(PlainValues<dg::DVec2, dg::FVec3, DVec3, dg::DPoint2D, DPoint3D, DBox, DBox2D, dg::FMat33, dg::DMat33,
                          DMat44, dg::Quaternion<float>, Location, dg::Camera3D, dg::Color>);

// Sizes that hosts may rely on when they pass arrays of these.
static_assert(sizeof(DVec3) == 24 && sizeof(dg::FVec3) == 12 && sizeof(dg::Quaternion<float>) == 16);

TEST(Vectors, NormalizeTellsWhetherThereIsADirection) {
    DVec3 vector{0, 3, -4};
    EXPECT_TRUE(vector.Normalize());
    EXPECT_EQ(Of(vector), (Three{0, 0.6, -0.8}));
    DVec3 zero{-0.0, 0, 0};
    EXPECT_FALSE(zero.Normalize());
    EXPECT_EQ(zero, DVec3::ZERO);
    DVec3 notANumber{NaN, 1, 0};
    EXPECT_TRUE(notANumber.Normalize()) << "not zero";
    EXPECT_TRUE(std::isnan(notANumber.x) && std::isnan(notANumber.y));
}

TEST(Vectors, TheAngleNeedsNoUnitVectors) {
    const struct {
        const char* name;
        DVec3 a;
        DVec3 b;
        double expected;
    } rows[] = {
        {"zero and any", DVec3::ZERO, DVec3::X, 0},
        {"parallel", {1, 2, 3}, {10, 20, 30}, 0},
        {"opposite", {0, 2, 0}, {0, -7, 0}, std::numbers::pi},
        {"right angle", {5, 0, 0}, {0, 0, 0.001}, std::numbers::pi / 2},
        {"too small for a cosine", {1, 0, 0}, {1, 1e-9, 0}, 1e-9},
        {"almost opposite", {1, 0, 0}, {-1, 1e-9, 0}, std::numbers::pi - 1e-9},
    };
    for (const auto& row : rows) {
        EXPECT_NEAR(dg::Angle(row.a, row.b), row.expected, 1e-15) << row.name;
        EXPECT_NEAR(dg::Angle(row.b, row.a), row.expected, 1e-15) << row.name << ", swapped";
    }
}

TEST(Boxes, AnEmptyBoxIsEmptyUntilAPointIsEnclosed) {
    DBox box;
    EXPECT_TRUE(box.IsEmpty());
    box.Enclose({-1, Largest, 3});
    EXPECT_FALSE(box.IsEmpty());
    EXPECT_EQ(Of(box.GetSize()), (Three{0, 0, 0}));
    DBox2D flat;
    EXPECT_TRUE(flat.IsEmpty());
    EXPECT_EQ(flat.GetCenter(), (dg::DPoint2D{0, 0}));
    EXPECT_EQ(flat.GetDiagonal(), 0);
    flat.Enclose({-1, -2});
    EXPECT_FALSE(flat.IsEmpty());
    flat.Enclose({2, 2});
    EXPECT_EQ(flat.GetCenter(), (dg::DPoint2D{0.5, 0}));
    EXPECT_EQ(flat.GetDiagonal(), 5);
}

TEST(Boxes, AnEmptyBoxStaysEmptyWhateverMapsIt) {
    DMat44 collapse;
    collapse.m[0][0] = collapse.m[1][1] = collapse.m[2][2] = 0;
    DMat44 mirror;
    mirror.m[0][0] = mirror.m[1][1] = mirror.m[2][2] = -1;
    for (const DMat44& matrix : {collapse, mirror, DMat44::Translation({1, 2, 3})}) {
        DBox box;
        box *= matrix;
        EXPECT_EQ(box, DBox::EMPTY);
    }
}

TEST(Locations, AxesWithoutDirectionStayAsTheyAre) {
    for (const Location& bent : {Location({0, 0, 0}, {0, 2, 0}, {0, 0, 3}, {1, 2, 3}),      // no U
                                 Location({2, 0, 0}, {0, 0, 0}, {0, 0, 3}, {1, 2, 3}),      // no V
                                 Location({2, 0, 0}, {-4, 0, 0}, {0, 0, 3}, {1, 2, 3})}) {  // V parallel to U
        Location sanitized = bent;
        sanitized.Sanitize();
        EXPECT_EQ(sanitized, bent);
    }
}

TEST(Locations, SanitizeIsDoneInDoublePrecision) {
    // In single precision U would not be of unit length to the last bit, and V not perpendicular to it.
    Location location({1.0e-30F, 3.0e-30F, 2.0e-30F}, {1.0e30F, 0, 1.0e30F}, {}, {});
    location.Sanitize();
    const DVec3 u(location.GetU());
    const DVec3 v(location.GetV());
    EXPECT_NEAR(u.Norm(), 1, 1e-7);
    EXPECT_NEAR(v.Norm(), 1, 1e-7);
    EXPECT_NEAR(dg::DotProduct(u, v), 0, 1e-7);
}

}  // namespace
