// The trackball: projections and steps. Positions are pixels in a ball of radius 100 about (400, 300).
#include "touch/navigation/Trackball.h"
#include "tests/unit/Values.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

using dg::DPoint3D;
using dg::DVec3;
using dg::Quaternion;
using testing::IsTrue;
using touch::Trackball;
using values::Four;
using values::Near;
using values::Of;
using values::Three;

constexpr double Tolerance = 1e-15;
constexpr DPoint3D Center{400, 300, 0};
constexpr double Radius = 100;

Trackball MakeBall(std::int32_t mode = Trackball::Plain, double gain = 1) {
    Trackball ball;
    ball.SetMode(mode);
    ball.SetGain(gain);
    ball.SetRadius(Radius);
    return ball;
}

// One step from one place to another, given in radii from the centre.
Quaternion<float> Step(Trackball ball, double x0, double y0, double x1, double y1) {
    ball.BeginDrag({Center.x + Radius * x0, Center.y + Radius * y0, 0}, Center, DVec3::ZERO, false);
    return ball.Drag({Center.x + Radius * x1, Center.y + Radius * y1, 0});
}

TEST(Trackballs, PointsAreProjectedOntoTheBallAndItsRim) {
    const struct {
        const char* name;
        DPoint3D point;
        Three expected;
    } rows[] = {
        {"centre", {400, 300, 0}, {0, 0, 1}},
        {"just outside", {501, 300, 0}, {1, 0, 0}},
        {"outside, on a slope", {400 + 300, 300 - 400, 0}, {0.6, -0.8, 0}},
        {"the height is not looked at", {450, 300, 77}, {0.5, 0, std::sqrt(0.75)}},
    };
    for (const auto& row : rows) {
        Trackball ball = MakeBall();
        EXPECT_THAT(Of(ball.BeginDrag(row.point, Center, DVec3::ZERO, false)), Near(row.expected, Tolerance))
            << row.name;
        EXPECT_THAT(Of(ball.lastVector), Near(row.expected, Tolerance)) << row.name;
    }
}

TEST(Trackballs, AConstrainedProjectionStaysPerpendicularToTheAxis) {
    const struct {
        const char* name;
        DVec3 axis;
        DPoint3D point;
        Three expected;
    } rows[] = {
        {"about Z, centre: no direction left", DVec3::Z, {400, 300, 0}, {0, 0, 0}},
        {"about X, inside", DVec3::X, {400 + 60, 300, 0}, {0, 0, 1}},
    };
    for (const auto& row : rows) {
        Trackball ball = MakeBall();
        EXPECT_THAT(Of(ball.BeginDrag(row.point, Center, row.axis, true)), Near(row.expected, 1e-8)) << row.name;
        EXPECT_EQ(ball.axis, row.axis) << row.name;
    }
    Trackball ball = MakeBall();
    ball.BeginDrag({430, 300, 0}, Center, DVec3::Z, true);
    EXPECT_EQ(ball.Drag(Center), Quaternion<float>{}) << "to a point without a projection";
    EXPECT_EQ(ball.Drag({430, 300, 0}), Quaternion<float>{}) << "and from it";
}

TEST(Trackballs, TheCentreWeightedAngleFallsWithTheDistanceOfTheNewPoint) {
    const struct {
        const char* name;
        double gain;
        double x0, x1;
        double factor;
    } rows[] = {
        {"at the centre", 2, -0.01, 0, 2},
        {"only the new point counts", 2, 0.9, 0.6, 2 * std::cos(0.6)},
        {"outside", 2, 0.5, 3, 1},
        {"negative gain turns back", -1, 0, 0.6, -std::cos(0.6)},
    };
    for (const auto& row : rows) {
        const Quaternion<float> plain = Step(MakeBall(), row.x0, 0, row.x1, 0);
        const Quaternion<float> weighted = Step(MakeBall(Trackball::CenterWeighted, row.gain), row.x0, 0, row.x1, 0);
        const double half = std::asin(plain.y) * row.factor;
        EXPECT_THAT(Of(weighted), Near(Four{0, std::sin(half), 0, std::cos(half)}, 3e-7)) << row.name;
        EXPECT_EQ(Step(MakeBall(Trackball::Plain, row.gain), row.x0, 0, row.x1, 0), plain) << row.name;
    }
    // Whether a point is on the rim is up to its rounded direction, which is a little short of 1 here.
    EXPECT_NE(Step(MakeBall(Trackball::CenterWeighted, 2), 0.5, 0, 0.1, 1.2), Step(MakeBall(), 0.5, 0, 0.1, 1.2));
}

TEST(Trackballs, ACentreWeightedStepBelowSinglePrecisionIsTheIdentity) {
    // A vector part of 5e-8, below 1.2e-7: plain steps keep it, weighted ones drop it.
    EXPECT_GT(Step(MakeBall(), 0, 0, 1e-7, 0).y, 0);
    EXPECT_EQ(Step(MakeBall(Trackball::CenterWeighted, 2), 0, 0, 1e-7, 0), Quaternion<float>{});
    EXPECT_GT(Step(MakeBall(Trackball::CenterWeighted, 2), 0, 0, 3e-7, 0).y, 0);
}

TEST(Trackballs, APreviousVectorThatIsTooShortGivesTheIdentityAndADragStartsHere) {
    const struct {
        const char* name;
        double length;
        bool turns;
    } rows[] = {
        {"none: no drag has begun", 0, false},
        {"at the limit", std::ldexp(1, -25), false},
        {"above the limit", std::ldexp(1, -24), true},
    };
    for (const auto& row : rows) {
        Trackball ball = MakeBall();
        ball.center = Center;
        ball.lastVector = {row.length, 0, 0};
        EXPECT_EQ(ball.Drag({400, 350, 0}) != Quaternion<float>{}, row.turns) << row.name;
        EXPECT_THAT(Of(ball.lastVector), Near(Three{0, 0.5, std::sqrt(0.75)}, Tolerance)) << row.name;
    }
}

}  // namespace
