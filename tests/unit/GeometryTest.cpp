// The geometry types at their edges: values without direction, empty boxes, NaN; and what the compiler may rely on.
#include "host/dg/Box.h"
#include "host/dg/Camera3D.h"
#include "host/dg/Color.h"
#include "tests/unit/Values.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>
#include <type_traits>

namespace {

using dg::DBox;
using dg::DBox2D;
using dg::DMat44;
using dg::DPoint3D;
using dg::DVec3;
using dg::Location;
using values::Of;
using values::Three;

constexpr double NaN = std::numeric_limits<double>::quiet_NaN();
constexpr double Largest = std::numeric_limits<double>::max();

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
