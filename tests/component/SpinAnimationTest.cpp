// Velocity samples, and the transition of a released spin. A step of 24 pixels at the middle turns the velocity
// trackball by 2 cos(0.1) asin(0.1).
#include "tests/support/FingerScript.h"
#include "tests/support/Matchers.h"

#include <gtest/gtest.h>

#include <cmath>

namespace tests {
namespace {

const double TickAngle = 2 * std::cos(0.1) * std::asin(0.1);

// A finger that has crossed the middle and moved dx pixels on since the last tick.
FingerScript& Flick(FingerScript& s, int dx) {
    return s.Down(1, 460, 300).Tick(200).Move(1, 500, 300).Move(1, 500 + dx, 300);
}

TEST(SpinAnimation, ATickSamplesItsOwnRotationScaledByItsInterval) {
    const struct {
        const char* name;
        int interval;
        double share;  // of the tick's rotation
    } rows[] = {{"100 ms: half", 100, 0.5},    {"50 ms: none", 50, 0},    {"25 ms: reversed", 25, -1},
                {"10 ms: four times", 10, -4}, {"0 ms: no sample", 0, 0}, {"-10 ms: no sample", -10, 0}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        FingerScript s = FingerScript::OnShapeView();
        Flick(s, 24).Tick(row.interval);
        const double half = row.share * TickAngle / 2;
        const dg::Quaternion<float> expected{0, static_cast<float>(std::sin(half)), 0,
                                             static_cast<float>(std::cos(half))};
        EXPECT_TRUE(AreNear(s.Inspect().GetSpinVelocity(), expected, 2e-6));
    }
}

TEST(SpinAnimation, SamplesDoNotAddUpAndNeedAViewThatChanged) {
    FingerScript s = FingerScript::OnShapeView();
    s.Down(1, 460, 300).Move(1, 480, 300).Tick(100);
    EXPECT_EQ(s.Inspect().GetSpinVelocity(), dg::Quaternion<float>());
    s.Move(1, 500, 300).Move(1, 524, 300).Tick(100);
    const dg::Quaternion<float> sampled = s.Inspect().GetSpinVelocity();
    EXPECT_NE(sampled, dg::Quaternion<float>());
    s.Tick(0);
    EXPECT_EQ(s.Inspect().GetSpinVelocity(), sampled);
    s.Rest().Tick(100);
    EXPECT_TRUE(AreNear(s.Inspect().GetSpinVelocity(), dg::Quaternion<float>(), 0)) << "it has not moved since";
}

TEST(SpinAnimation, AReleasedSpinCoastsBeyondTheLimit) {
    struct Row {
        const char* name;
        viewer::ViewSpec view;
        int dx, interval;
        bool coasts;
    };
    viewer::ViewSpec exploreOrthographic = OrthographicView();
    exploreOrthographic.navMethod = "explore";
    const Row rows[] = {{"0.0167", OrthographicView(), 1, 10, false},
                        {"0.0333", OrthographicView(), 2, 10, true},
                        {"0.0291", OrthographicView(), 14, 100, false},
                        {"0.0312", OrthographicView(), 15, 100, true},
                        {"a tick of 50 ms", OrthographicView(), 100, 50, false},
                        {"perspective", PerspectiveView(), 24, 10, true},
                        {"orthographic explore", exploreOrthographic, 24, 10, true},
                        {"perspective explore", ExploreView(), 24, 10, false}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        FingerScript s = FingerScript::OnShapeView(row.view);
        EXPECT_EQ(Flick(s, row.dx).Tick(row.interval).Mark().Up(1).Answer(), true);
        s.ExpectActions(row.coasts ? Texts{"StopTransition", "AddTransition"} : Texts{});
        EXPECT_EQ(s.Viewer().IsTransitionPlaying(), row.coasts);
    }
}

// Seen from the front the spin is about Y; what was sampled turns the camera on the way it went.
TEST(SpinAnimation, TheTransitionGoesOneSampledRotationFurtherAboutTheSpinCenter) {
    viewer::ViewSpec view = OrthographicView();
    view.spinCenter = {1, 2, 3};
    FingerScript s = FingerScript::OnShapeView(view);
    Flick(s, 24).Tick();
    const dg::Location released = s.CameraLocation();
    s.Mark().Up(1);
    const auto added = s.Calls<viewer::AddTransitionCall>();
    ASSERT_EQ(added.size(), 1U);
    EXPECT_EQ(added[0].start, released);
    EXPECT_EQ(added[0].center, dg::DPoint3D(1, 2, 3));
    EXPECT_EQ(added[0].values, (std::array<std::int64_t, 4>{0, 100, 15, 0}));
    EXPECT_FALSE(added[0].flag);
    const double angle = -std::asin(0.1) - 4 * TickAngle;  // from (-1, -2, 17), as seen from the spin centre
    const dg::DPoint3D end(1 - std::cos(angle) + 17 * std::sin(angle), 0, 3 + std::sin(angle) + 17 * std::cos(angle));
    EXPECT_TRUE(AreNear(added[0].end.GetPos(), end, 1e-4));
}

TEST(SpinAnimation, CarriesTheRotationFromTheCamerasFrameIntoTheWorld) {
    viewer::ViewSpec view = OrthographicView();
    view.camera.location = dg::Location({0, 1, 0}, {0, 0, 1}, {1, 0, 0}, {20, 0, 0});
    FingerScript s = FingerScript::OnShapeView(view);
    Flick(s, 24).Tick().Up(1);
    const dg::Location end = s.Calls<viewer::AddTransitionCall>().at(0).end;
    const double angle = -std::asin(0.1) - 4 * TickAngle;  // about Z, from X
    EXPECT_TRUE(AreNear(end.GetPos(), dg::DPoint3D(20 * std::cos(angle), 20 * std::sin(angle), 0), 1e-4));
}

}  // namespace
}  // namespace tests
