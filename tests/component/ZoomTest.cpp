// Pinch zoom and explore flight.
#include "tests/support/FingerScript.h"
#include "tests/support/Matchers.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace tests {
namespace {

TEST(Zoom, AnOrthographicViewGetsNarrowerByAPowerOfTwo) {
    const struct {
        const char* name;
        unsigned int pixels;
        int change;  // of the span after the onset
        double factor;
    } rows[] = {{"no change", 640, 0, 1},
                {"64 of 640 pixels", 640, 64, std::exp2(-0.6)},
                {"-64 of 640 pixels", 640, -64, std::exp2(0.6)},
                {"128 of 768 pixels", 768, 128, 0.5},
                {"64 of 128 pixels", 128, 64, 0.125},
                {"64 of 100 pixels count as 128", 100, 64, 0.125}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        viewer::ViewSpec view = OrthographicView();
        view.width = row.pixels;
        FingerScript s = FingerScript::OnShapeView(view);
        s.Down({{1, 300, 300}, {2, 600, 300}}).Move({{1, 250, 300}, {2, 650, 300}});
        ASSERT_TRUE(s.Inspect().IsZoomStarted());
        for (const int change : {10, row.change, row.change}) {
            s.Move({{1, 250, 300}, {2, 650 + change, 300}});
        }
        EXPECT_NEAR(s.Calls<viewer::SetWidthCall>().back().width, 20 * row.factor, 1e-12) << "steps do not add up";
    }
}

TEST(Zoom, SpansAreTruncatedBeforeTheyAreSubtracted) {
    FingerScript s = FingerScript::OnShapeView();
    s.Down({{1, 400, 300}, {2, 520, 300}}).Move({{1, 400, 300}, {2, 547, 310}});
    ASSERT_NEAR(s.Inspect().GetStartGestureSpan(), 147.34, 0.005);
    s.Move({{1, 400, 300}, {2, 580, 318}});
    ASSERT_NEAR(s.Inspect().GetGestureSpan(), 180.90, 0.005);
    EXPECT_NEAR(s.Calls<viewer::SetWidthCall>().back().width, 20 * std::exp2(-33 * 6 / 1000.0), 1e-12);
}

// The model is 22 deep: a normalised pinch of 1 travels 220.
TEST(Zoom, APerspectiveCameraTravelsByTheSquareOfTheChange) {
    const struct {
        const char* name;
        unsigned int pixels;
        int change;
        double speed, travel;
    } rows[] = {{"out by 20", 1000, 20, 1, 8.8},
                {"in by 20", 1000, -20, 1, -8.8},
                {"out by 2", 1000, 2, 1, 0.088},
                {"no change", 1000, 0, 1, 0},
                {"half speed", 1000, 20, 0.5, 4.4},
                {"wide view", 2000, 20, 1, 2.2},
                {"100 pixels count as 128", 100, 16, 1, 343.75},
                {"128 pixels", 128, 16, 1, 343.75}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        viewer::ViewSpec view = PerspectiveView();
        view.width = row.pixels;
        view.navSpeed = row.speed;
        FingerScript s = FingerScript::OnShapeView(view);
        s.Down({{1, 350, 300}, {2, 650, 300}}).Move({{1, 300, 300}, {2, 700, 300}}).Tick();
        ASSERT_DOUBLE_EQ(s.Inspect().GetWorldDistance(), 22);
        s.Mark().Move({{1, 300 - row.change / 2, 300}, {2, 700 + row.change / 2, 300}});
        s.ExpectActions({"SetCameraLocation", "SetCameraLocation"});  // pan, zoom
        EXPECT_NEAR(s.CameraLocation().GetPos().z, 20 - row.travel, 1e-9);
        s.Rest();
        EXPECT_NEAR(s.CameraLocation().GetPos().z, 20 - row.travel, 1e-9) << "each frame counts its own change";
    }
}

// The middle of the fingers goes 100 pixels to the right while they spread by 20.
TEST(Zoom, PanAndZoomOfOneFrameAddUp) {
    FingerScript s = FingerScript::OnShapeView(PerspectiveView());
    s.Down({{1, 350, 300}, {2, 650, 300}}).Move({{1, 300, 300}, {2, 700, 300}}).Tick();
    s.Move({{1, 390, 300}, {2, 810, 300}});
    // Turned to the left by the pan, the camera has the origin under the fingers and travels towards it.
    EXPECT_NEAR(s.CameraLocation().GetW().x, std::sin(std::atan(0.1)), 1e-6);
    EXPECT_TRUE(AreNear(s.CameraLocation().GetPos(), dg::DPoint3D(0, 0, 20 - 8.8 * std::hypot(1, 0.1)), 1e-5));
}

TEST(Zoom, AFingerThatJoinsDoesNotMakeAPerspectiveCameraJump) {
    FingerScript s = FingerScript::OnShapeView(PerspectiveView());
    s.Down({{1, 350, 300}, {2, 650, 300}}).Move({{1, 300, 300}, {2, 700, 300}}).Tick().Down(3, 900, 300);
    const dg::DPoint3D before = s.CameraLocation().GetPos();
    s.Rest();
    EXPECT_TRUE(s.Inspect().IsZoomStarted());
    EXPECT_EQ(s.CameraLocation().GetPos(), before);
}

TEST(Explore, OneHandStartsWithABoundsRequestAndFliesOnWhileHeldApart) {
    const struct {
        const char* name;
        int change;
        double speed, step;  // towards the model on every frame
    } rows[] = {{"apart", 100, 1, 0.0022}, {"together", -100, 1, -0.0022}, {"fast", 200, 2, 0.0176}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        viewer::ViewSpec view = ExploreView();
        view.navSpeed = row.speed;
        FingerScript s = FingerScript::OnShapeView(view);
        s.Down({{1, 300, 300}, {2, 700, 300}});
        s.ExpectActions({"StopTransition", "ManageObject accepted", "GetBoundingBox all visible"});
        EXPECT_TRUE(s.Inspect().IsExploreStarted());
        s.Tick().Move({{1, 250, 300}, {2, 750, 300}});
        EXPECT_EQ(s.CameraLocation().GetPos(), dg::DPoint3D(0, 0, 20)) << "no change since the onset";
        s.Mark().Move({{1, 250 - row.change / 2, 300}, {2, 750 + row.change / 2, 300}}).Rest().Rest();
        s.ExpectActions({"SetCameraLocation", "SetCameraLocation", "SetCameraLocation"});
        EXPECT_NEAR(s.CameraLocation().GetPos().z, 20 - 3 * row.step, 1e-12);
    }
}

TEST(Explore, StartsOnlyWithAPerspectiveCameraAndHandsThatTheSwitchesAllow) {
    const struct {
        const char* name;
        bool orthographic;
        const char* method;
        const char* environment;
        int distance;  // between the fingers
        bool starts;
    } rows[] = {{"explore", false, "explore", "", 100, true},
                {"another method", false, "standard", "", 100, false},
                {"letter case", false, "Explore", "", 100, false},
                {"orthographic", true, "explore", "", 100, false},
                {"zoom switched off", false, "explore", "HXAPP_DONTZOOM", 100, false},
                {"two hands", false, "explore", "HXAPP_TOUCH_TWO_HANDS_EXPLORE", 400, true},
                {"one hand for two", false, "explore", "HXAPP_TOUCH_TWO_HANDS_EXPLORE", 100, false}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        viewer::ViewSpec view = row.orthographic ? OrthographicView() : PerspectiveView();
        view.navMethod = row.method;
        FingerScript s = FingerScript::OnShapeView(view, WithSwitch(row.environment));
        s.Down({{1, 300, 300}, {2, 300 + row.distance, 300}});
        EXPECT_EQ(s.Inspect().IsExploreStarted(), row.starts);
        EXPECT_EQ(s.Calls<viewer::GetBoundingBoxCall>().size(), row.starts ? 1U : 0U);
    }
}

TEST(Explore, LiftingAHandStopsTheFlightOfTwo) {
    FingerScript s = FingerScript::OnShapeView(ExploreView(), WithSwitch("HXAPP_TOUCH_TWO_HANDS_EXPLORE"));
    s.Down({{1, 200, 300}, {2, 800, 300}}).Tick().Move(1, 200, 400);
    EXPECT_LT(s.CameraLocation().GetPos().z, 20);
    s.Mark().Tick().Up(2).ExpectNoActions();
    s.Tick().Rest().Tick().Rest();
    EXPECT_FALSE(s.Inspect().IsExploreStarted());
}

// The right hand asks for a turn of 0.004 to the right; the camera has rolled since the flight started.
TEST(Explore, TheTurnIsReversedOnceTheCamerasUpHasTurnedByMoreThanAQuarter) {
    for (const int degrees : {0, 80, 100, 180}) {
        SCOPED_TRACE(degrees);
        FingerScript s = FingerScript::OnShapeView(ExploreView(), WithSwitch("HXAPP_TOUCH_TWO_HANDS_EXPLORE"));
        s.Down({{1, 200, 300}, {2, 800, 300}}).Tick(50);
        const double roll = degrees * std::numbers::pi / 180;
        const auto c = static_cast<float>(std::cos(roll));
        const auto n = static_cast<float>(std::sin(roll));
        viewer::ViewChange change;
        change.camera = ExploreView().camera;
        change.camera->location = dg::Location({c, n, 0}, {-n, c, 0}, {0, 0, 1}, {0, 0, 20});
        s.Change(change).Move(2, 900, 300);
        EXPECT_NEAR(s.CameraLocation().GetW().x, degrees < 90 ? -std::sin(0.004) : std::sin(0.004), 1e-6);
    }
}

}  // namespace
}  // namespace tests
