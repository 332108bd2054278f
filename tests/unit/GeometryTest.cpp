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

static_assert(
    noexcept(DVec3().Normalize()) && noexcept(Location() * DMat44()) && noexcept(DMat44() * Location()) && noexcept(
        DMat44(
            DMat44(),
            DMat44())) && noexcept(Location()
                                       .Sanitize()) && noexcept(DMat44::Rotation(DVec3::Z,
                                                                                 1.0)) && noexcept(DBox2D()
                                                                                                       .GetDiagonal()));

// The products are usable in constant expressions.
constexpr DMat44 Lift = DMat44::Translation({0, 0, 1});
static_assert((Location() * DMat44(Lift, Lift)).GetPos() == DPoint3D(0, 0, 2));
static_assert((Lift * Location()).GetPos() == DPoint3D(0, 0, 1));
static_assert(dg::FMat33() * dg::FMat33() == dg::FMat33());
static_assert((DBox({0, 0, 0}, {1, 1, 1}) *= Lift) == DBox({0, 0, 1}, {1, 1, 2}));
static_assert(dg::CrossProduct(DVec3::X, DVec3::Y) == DVec3::Z && dg::DotProduct({1, 2, 3}, {4, 5, 6}) == 32);
static_assert((DPoint3D(3, 2, 1) -= DVec3(1, 2, 3)) == DPoint3D(2, 0, -2));

TEST(Vectors, NormalizeTellsWhetherThereIsADirection) {
    DVec3 vector{0, 3, -4};
    EXPECT_TRUE(vector.Normalize());
    EXPECT_EQ(Of(vector), (Three{0, 0.6, -0.8}));
    DVec3 zero;
    EXPECT_FALSE(zero.Normalize());
    EXPECT_EQ(zero, DVec3::ZERO);
    DVec3 negativeZero{-0.0, 0.0, -0.0};
    EXPECT_FALSE(negativeZero.Normalize());
    DVec3 notANumber{NaN, 1, 0};
    EXPECT_TRUE(notANumber.Normalize()) << "not zero";
    EXPECT_TRUE(std::isnan(notANumber.x) && std::isnan(notANumber.y));
}

TEST(Vectors, SetWidensExactly) {
    DVec3 vector;
    vector.Set({0.1F, -2.5F, 1e-40F});
    EXPECT_EQ(Of(vector), (Three{static_cast<double>(0.1F), -2.5, static_cast<double>(1e-40F)}));
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
    EXPECT_TRUE(DBox().IsEmpty());
    EXPECT_TRUE(DBox2D().IsEmpty());
    DBox box;
    box.Enclose({-1, Largest, 3});
    EXPECT_FALSE(box.IsEmpty());
    EXPECT_EQ(Of(box.GetSize()), (Three{0, 0, 0}));
    DBox2D flat;
    flat.Enclose({-1, -2});
    EXPECT_FALSE(flat.IsEmpty());
    EXPECT_EQ(flat.GetCenter(), (dg::DPoint2D{-1, -2}));
    EXPECT_EQ(flat.GetDiagonal(), 0);
    flat.Enclose({2, 2});
    EXPECT_EQ(flat.GetCenter(), (dg::DPoint2D{0.5, 0}));
    EXPECT_EQ(flat.GetDiagonal(), 5);
}

TEST(Boxes, AnEmptyBoxHasNoDiagonalAndItsCentreIsTheOrigin) {
    EXPECT_EQ(DBox2D::EMPTY.GetDiagonal(), 0);
    EXPECT_EQ(DBox2D::EMPTY.GetCenter(), (dg::DPoint2D{0, 0}));
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
    const struct {
        const char* name;
        Location location;
    } rows[] = {
        {"U is zero", Location({0, 0, 0}, {0, 2, 0}, {0, 0, 3}, {1, 2, 3})},
        {"V is zero", Location({2, 0, 0}, {0, 0, 0}, {0, 0, 3}, {1, 2, 3})},
        {"V is parallel to U", Location({2, 0, 0}, {-4, 0, 0}, {0, 0, 3}, {1, 2, 3})},
    };
    for (const auto& row : rows) {
        Location sanitized = row.location;
        sanitized.Sanitize();
        EXPECT_EQ(sanitized, row.location) << row.name;
    }
}

TEST(Locations, ANanAxisGivesNanAndNoFault) {
    const auto nan = static_cast<float>(NaN);
    Location location({nan, 0, 0}, {0, 1, 0}, {0, 0, 1}, {1, 2, 3});
    location.Sanitize();
    EXPECT_TRUE(std::isnan(location.GetW().x));
    EXPECT_EQ(Of(location.GetPos()), (Three{1, 2, 3}));
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

TEST(Cameras, TheDefaultHasNoPixels) {
    constexpr dg::Camera3D camera;
    EXPECT_EQ(camera.GetViewportWidth(), 0U);
    EXPECT_EQ(camera.GetViewportHeight(), 0U);
    EXPECT_EQ(camera.GetWorldToEye(), DMat44());
}

}  // namespace
