// The rotation helpers, at the values where they switch rules. Expected numbers are written from half angles.
#include "touch/navigation/QuaternionMath.h"
#include "host/dg/Traits.h"
#include "tests/unit/Values.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace {

using dg::DVec3;
using dg::Quaternion;
using testing::Each;
using testing::IsNan;
using values::Four;
using values::Near;
using values::Of;

using namespace touch;

constexpr double Pi = std::numbers::pi;
constexpr double Tolerance = 1e-7;  // half a unit of the last place of a float near 1

Four AboutZ(double angle) {
    return {0, 0, std::sin(angle / 2), std::cos(angle / 2)};
}

Quaternion<float> Rounded(const Four& q) {
    return {static_cast<float>(q[0]), static_cast<float>(q[1]), static_cast<float>(q[2]), static_cast<float>(q[3])};
}

TEST(QuaternionFromAxisAngle, HasAPositiveScalarPart) {
    const struct {
        const char* name;
        DVec3 axis;
        double angle;
        Four expected;
    } rows[] = {
        {"half turn", DVec3::X, Pi, {1, 0, 0, 0}},
        {"once around and a little more", DVec3::Z, 2 * Pi + 0.1, AboutZ(0.1)},
        {"the axis is not normalised", {0, 0, 2}, Pi / 2, {0, 0, std::numbers::sqrt2, std::numbers::sqrt2 / 2}},
    };
    for (const auto& row : rows) {
        EXPECT_THAT(Of(QuaternionFromAxisAngle(row.axis, row.angle)), Near(row.expected, Tolerance)) << row.name;
    }
}

TEST(InvertQuaternion, DividesByTheLengthAndNotByItsSquare) {
    const struct {
        const char* name;
        Quaternion<float> q;
        Four expected;
    } rows[] = {
        {"negative scalar part stays", {0, 0, 0.6F, -0.8F}, {0, 0, -0.6, -0.8}},
        {"length 2", {0, 0, 1.2F, 1.6F}, {0, 0, -0.6, 0.8}},
    };
    for (const auto& row : rows) {
        Quaternion<float> q = row.q;
        InvertQuaternion(q);
        EXPECT_THAT(Of(q), Near(row.expected, Tolerance)) << row.name;
    }
    Quaternion<float> zero{0, 0, 0, 0};
    InvertQuaternion(zero);
    EXPECT_THAT(Of(zero), Each(IsNan()));
}

TEST(QuaternionFromTo, IsTheShortestRotation) {
    const double half = std::numbers::sqrt2 / 2;
    const struct {
        const char* name;
        DVec3 from;
        DVec3 to;
        Four expected;
    } rows[] = {
        {"below the tolerance", DVec3::X, {1, 2e-16, 0}, {0, 0, 0, 1}},
        {"above the tolerance", DVec3::X, {1, 3e-16, 0}, {0, 0, 1.5e-16, 1}},
        {"longer than 1 by rounding", {1.0000001, 0, 0}, DVec3::Y, {0, 0, half, half}},
        {"opposite to X", DVec3::X, {-1, 0, 0}, {0, -1, 0, 0}},
        {"opposite to Y", DVec3::Y, {0, -1, 0}, {1, 0, 0, 0}},
        {"opposite to Z", DVec3::Z, {0, 0, -1}, {-1, 0, 0, 0}},
        {"opposite to YZ", {0, half, half}, {0, -half, -half}, {0, half, -half, 0}},
        {"opposite to XZ", {half, 0, half}, {-half, 0, -half}, {-half, 0, half, 0}},
        {"opposite but for less than the tolerance", DVec3::X, {-1, 1e-16, 0}, {0, -1, 0, 0}},
    };
    for (const auto& row : rows) {
        const Quaternion<float> q = QuaternionFromTo(row.from, row.to);
        EXPECT_THAT(Of(q), Near(row.expected, Tolerance)) << row.name;
        EXPECT_GE(q.w, 0) << row.name;
    }
    EXPECT_GT(QuaternionFromTo(DVec3::X, {1, 3e-16, 0}).z, 0) << "a small rotation is not lost";
}

TEST(SlerpQuaternion, GoesAlongTheShorterArc) {
    const Four identity{0, 0, 0, 1};
    const Four negated{-0.0, -0.0, -std::sin(0.4), -std::cos(0.4)};  // the same rotation as AboutZ(0.8)
    const struct {
        const char* name;
        Four a;
        Four b;
        float t;
        Four expected;
    } rows[] = {
        {"before the start", identity, AboutZ(0.5), -1, AboutZ(-0.5)},
        {"target of the other sign", identity, negated, 0.5F, AboutZ(0.4)},
        {"start of the other sign", negated, identity, 0.5F, AboutZ(0.4)},
        {"equal rotations of opposite sign", AboutZ(0.8), negated, 0.3F, AboutZ(0.8)},
        {"nearly equal", identity, AboutZ(1e-4), 0.25F, AboutZ(0.25e-4)},
    };
    for (const auto& row : rows) {
        const Quaternion<float> q = SlerpQuaternion(Rounded(row.a), Rounded(row.b), row.t);
        EXPECT_THAT(Of(q), Near(row.expected, 2 * Tolerance)) << row.name;
        EXPECT_GE(q.w, 0) << row.name;
    }
}

TEST(SlerpQuaternion, BlendsLinearlyBelowTheTolerance) {
    // A thousand times the way, a straight line and an arc of less than a thousandth radian differ.
    const auto blended = [](float dot) { return SlerpQuaternion({0.5F, 0, 0, 1}, {0, 0.5F, 0, dot}, 1000); };
    const Quaternion<float> straight = blended(1 - dg::Traits<float>::s_EPSILON / 2);
    EXPECT_NEAR(straight.w < 0 ? -straight.x : straight.x, -999 * 0.5, 0.1);
    const Quaternion<float> arc = blended(1 - dg::Traits<float>::s_EPSILON);
    EXPECT_NEAR(arc.w < 0 ? -arc.x : arc.x, -959.9 * 0.5, 0.1);
}

TEST(RotateVectorByLocation, TurnsTheAxisAndKeepsItsLength) {
    const dg::Location cycled({0, 1, 0}, {0, 0, 1}, {1, 0, 0}, {10, 20, 30});
    const dg::Location doubled({0, 2, 0}, {0, 0, 2}, {2, 0, 0}, {10, 20, 30});
    for (const dg::Location& location : {cycled, doubled}) {
        Quaternion<float> q{0.1F, 0.2F, 0.3F, 0.9F};
        RotateVectorByLocation(q, location);
        EXPECT_THAT(Of(q), Near(Four{0.3, 0.1, 0.2, 0.9}, Tolerance)) << location.GetU().y;
    }
}

}  // namespace
