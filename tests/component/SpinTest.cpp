// One finger on a 3D view. The trackball's radius is 240 pixels, its middle (500, 300).
#include "tests/support/FingerScript.h"
#include "tests/support/Matchers.h"

#include <gtest/gtest.h>

#include <cmath>
#include <utility>

namespace tests {
namespace {

const double StepAngle = std::asin(0.1);  // of 24 pixels at the middle

// A camera 20 to the right of the origin that looks along -X, with Z up.
dg::Location FromTheRight() {
    return {{0, 1, 0}, {0, 0, 1}, {1, 0, 0}, {20, 0, 0}};
}

TEST(Spin, TheStepThatLeavesTheStartDoesNotTurnAndTheNextOneDoes) {
    FingerScript s = FingerScript::OnShapeView();
    const dg::Location before = s.CameraLocation();
    s.Down(1, 460, 300).ExpectActions({"StopTransition"});
    s.Move(1, 490, 330).ExpectNoActions();
    s.Move(1, 500, 300).ExpectActions({"SetCameraLocation"});
    EXPECT_TRUE(AreNear(s.CameraLocation(), before, 0));
    s.Move(1, 524, 300).ExpectActions({"SetCameraLocation"});
    EXPECT_TRUE(AreNear(s.CameraLocation().GetPos(),
                        dg::DPoint3D(-20 * std::sin(StepAngle), 0, 20 * std::cos(StepAngle)), 1e-6));
    EXPECT_DOUBLE_EQ(s.Inspect().GetSpinTrackball().radius, 240);
    EXPECT_EQ(s.Inspect().GetSpinTrackball().center, dg::DPoint3D(500, 300, 0));
}

// The point of the model that faces the viewer, 2 in front of the centre, goes the finger's way: 0.2 to the side.
TEST(Spin, TheModelFollowsTheFinger) {
    for (const auto& [dx, dy] : {std::pair(24, 0), std::pair(-24, 0), std::pair(0, 24), std::pair(0, -24)}) {
        for (const bool turned : {false, true}) {
            SCOPED_TRACE(testing::Message()
                         << dx << ", " << dy << (turned ? ", seen from the right" : ", seen from the front"));
            viewer::ViewSpec view = OrthographicView();
            view.camera.location = turned ? FromTheRight() : view.camera.location;
            FingerScript s = FingerScript::OnShapeView(view);
            s.Down(1, 460, 300).Move(1, 500, 300).Move(1, 500 + dx, 300 + dy);
            const dg::DPoint3D facing = turned ? dg::DPoint3D(2, 0, 0) : dg::DPoint3D(0, 0, 2);
            const dg::DPoint2D expected(500 + dx / 2.4, 300 + dy / 2.4);
            EXPECT_TRUE(AreNear(s.PixelOf(facing), expected, 1e-4));
            EXPECT_TRUE(AreNear(s.PixelOf({0, 0, 0}), dg::DPoint2D(500, 300), 1e-4));
        }
    }
}

TEST(Spin, TheCenterKeepsItsPlaceOnTheScreenAndIsReadWhenTheSpinStarts) {
    for (const bool orthographic : {true, false}) {
        viewer::ViewSpec view = orthographic ? OrthographicView() : PerspectiveView();
        view.spinCenter = {9, 9, 9};
        FingerScript s = FingerScript::OnShapeView(view);
        viewer::ViewChange change;
        change.spinCenter = dg::DPoint3D(1, -1, 0.5);
        s.Down(1, 300, 200).Change(change);
        const dg::DPoint2D before = s.PixelOf(*change.spinCenter);
        for (int x = 340; x < 700; x += 60) {
            s.Move(1, x, 200 + x / 3);
            EXPECT_TRUE(AreNear(s.PixelOf(*change.spinCenter), before, 1e-3));
        }
        EXPECT_FALSE(AreNear(s.CameraLocation(), view.camera.location, 0.5)) << "it has turned a lot";
    }
}

// The rays through the finger and the view's middle: 0.001 a pixel over the distance of the view plane.
TEST(Spin, ExploringWithAPerspectiveCameraLooksAround) {
    const struct {
        const char* name;
        int dx, dy;
        double distance, tangent;
        double right, up;  // where the view goes
    } rows[] = {{"right", 100, 0, 1, 0.1, 1, 0},
                {"left", -100, 0, 1, 0.1, -1, 0},
                {"up", 0, 100, 1, 0.1, 0, 1},
                {"down", 0, -100, 1, 0.1, 0, -1},
                {"far plane", 100, 0, 2, 0.05, 1, 0}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        viewer::ViewSpec view = ExploreView();
        view.camera.distance = row.distance;
        view.preferences = {{"Model Viewer/display_rotation_center", true}};
        FingerScript s = FingerScript::OnShapeView(view);
        const auto expectTurn = [&](double angle) {
            const dg::DVec3 ahead = -dg::DVec3(s.CameraLocation().GetW());
            EXPECT_TRUE(AreNear(
                ahead, dg::DVec3(row.right * std::sin(angle), row.up * std::sin(angle), -std::cos(angle)), 1e-6));
        };
        s.Down(1, 500, 300).Mark();
        s.Move(1, 500 + row.dx, 300 + row.dy).ExpectActions({"SetCameraLocation"});
        expectTurn(0.6 * std::atan(row.tangent));
        s.Move(1, 500 + 2 * row.dx, 300 + 2 * row.dy);
        expectTurn(0.6 * std::atan(2 * row.tangent));
        EXPECT_EQ(s.CameraLocation().GetPos(), dg::DPoint3D(0, 0, 20));
        s.Mark().Rest().Tick().Up(1).ExpectActions({"SetCameraLocation"});
    }
}

// The step from (0.1, 0, 1) to (0.1, 0.1, 1) is about an axis that has all three components.
TEST(Spin, LookingAroundTurnsByItsShareWhateverTheAxis) {
    FingerScript s = FingerScript::OnShapeView(ExploreView());
    s.Down(1, 500, 300).Move(1, 600, 300);
    const dg::Location before = s.CameraLocation();
    s.Move(1, 600, 400);
    const dg::Location after = s.CameraLocation();
    double trace = 0;
    for (const auto axis : {&dg::Location::GetU, &dg::Location::GetV, &dg::Location::GetW}) {
        trace += dg::DotProduct(dg::DVec3((before.*axis)()), dg::DVec3((after.*axis)()));
    }
    const double between = dg::Angle({0.1, 0, 1}, {0.1, 0.1, 1});
    EXPECT_NEAR(std::acos((trace - 1) / 2), 0.6 * between, 1e-5);
}

TEST(Spin, NeitherSpeedNorResolutionNorSwitchesMatter) {
    viewer::HostSettings settings;
    settings.ppiX = 300;
    settings.environment = {"HXAPP_DONTSPIN", "HXAPP_DONTPAN", "HXAPP_DONTZOOM"};
    viewer::ViewSpec view = OrthographicView();
    view.navSpeed = 5;
    FingerScript s = FingerScript::OnShapeView(view, settings);
    s.Down(1, 460, 300).Move(1, 500, 300).Move(1, 524, 300);
    EXPECT_NEAR(s.CameraLocation().GetPos().x, -2, 1e-6);
}

TEST(Spin, AFingerThatStaysAfterAPanSpinsFromWhereItIs) {
    FingerScript s = FingerScript::OnShapeView();
    s.Down({{1, 300, 300}, {2, 460, 300}}).Move({{1, 340, 300}, {2, 500, 300}}).Up(1);
    const dg::Location panned = s.CameraLocation();
    s.Mark().Rest().ExpectActions({"StopTransition"});
    s.Rest();
    EXPECT_TRUE(AreNear(s.CameraLocation(), panned, 0));
    s.Move(2, 524, 300);
    EXPECT_NEAR(std::asin(-static_cast<double>(s.CameraLocation().GetW().x)), StepAngle, 1e-6);
}

}  // namespace
}  // namespace tests
