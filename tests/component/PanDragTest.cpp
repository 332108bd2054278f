// Two fingers pan a 3D view; one finger in multi-select mode drags.
#include "tests/support/FingerScript.h"
#include "tests/support/Matchers.h"

#include <gtest/gtest.h>

#include <utility>

namespace tests {
namespace {

TEST(Pan, AnOrthographicViewSlidesExactlyWithTheFingers) {
    struct Row {
        const char* name;
        int dx, dy;
        dg::Location camera;
        dg::DVec3 travel;
    };
    const dg::Location front({1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {0, 0, 20});
    const dg::Location side({0, 1, 0}, {0, 0, 1}, {1, 0, 0}, {20, 0, 0});
    const Row rows[] = {{"right", 40, 0, front, {-0.8, 0, 0}},
                        {"down", 0, -15, front, {0, 0.3, 0}},
                        {"one pixel", 1, 0, front, {-0.02, 0, 0}},
                        {"seen from the side", 40, 20, side, {0, -0.8, -0.4}}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        viewer::ViewSpec view = OrthographicView();
        view.camera.location = row.camera;
        FingerScript s = FingerScript::OnShapeView(view);
        s.Down({{1, 400, 300}, {2, 500, 320}}).ExpectActions({"StopTransition"});
        s.Move({{1, 400 + row.dx, 300 + row.dy}, {2, 500 + row.dx, 320 + row.dy}});
        s.ExpectActions({"SetCameraLocation"});
        EXPECT_TRUE(AreNear(s.CameraLocation().GetPos(), row.camera.GetPos() + row.travel, 1e-12));
        EXPECT_TRUE(AreNear(s.PixelOf({0, 0, 0}), dg::DPoint2D(500 + row.dx, 300 + row.dy), 1e-9));
        s.Rest();
        EXPECT_TRUE(AreNear(s.PixelOf({0, 0, 0}), dg::DPoint2D(500 + row.dx, 300 + row.dy), 1e-9));
    }
}

TEST(Pan, APerspectiveCameraTurnsSoThatTheModelFollowsTheFingers) {
    for (const auto& [dx, dy] : {std::pair(100, 0), std::pair(-100, 0), std::pair(0, 100), std::pair(0, -100)}) {
        SCOPED_TRACE(testing::Message() << dx << ", " << dy);
        FingerScript s = FingerScript::OnShapeView(PerspectiveView());
        s.Down({{1, 450, 300}, {2, 550, 300}});
        s.Move({{1, 450 + dx, 300 + dy}, {2, 550 + dx, 300 + dy}});
        EXPECT_TRUE(AreNear(s.PixelOf({0, 0, 0}), dg::DPoint2D(500 + dx, 300 + dy), 1e-3));
        EXPECT_EQ(s.CameraLocation().GetPos(), dg::DPoint3D(0, 0, 20));
        s.Move({{1, 450, 300}, {2, 550, 300}});
        EXPECT_TRUE(AreNear(s.CameraLocation(), PerspectiveView().camera.location, 1e-6)) << "and back";
    }
}

TEST(Pan, ExploringPansOnlyAnOrthographicView) {
    for (const bool orthographic : {true, false}) {
        viewer::ViewSpec view = orthographic ? OrthographicView() : PerspectiveView();
        view.navMethod = "explore";
        FingerScript s = FingerScript::OnShapeView(view);
        s.Down({{1, 400, 300}, {2, 500, 300}}).Move({{1, 440, 300}, {2, 540, 300}});
        EXPECT_EQ(s.Calls<viewer::SetCameraLocationCall>().size(), orthographic ? 1U : 0U);
    }
}

TEST(Pan, AFrameOnWhichAFingerLiftsMovesNothing) {
    FingerScript s = FingerScript::OnShapeView();
    s.Down({{1, 300, 300}, {2, 600, 300}}).Tick().Move({{1, 200, 200}, {2, 650, 400}}).Mark().Tick();
    s.Frame({{1, 100, 100, s.TouchTime(), workflow::TouchUp}, {2, 700, 500, s.TouchTime(), workflow::TouchMove}}, 2);
    EXPECT_EQ(s.Answer(), false);
    s.ExpectNoActions();
}

TEST(Drag, TurnsTheFingerIntoLeftButtonMessagesThatReachTheOthers) {
    FingerScript s = FingerScript::OnShapeView();
    s.SwitchMode();
    EXPECT_EQ(s.Down(1, 100, 200).Answer(), true);
    s.ExpectActions({"MsgMouseLeftDown 100 200 passed"});
    s.Tick().Move(1, 0, 230).ExpectActions({"MsgMouseLeftDrag 100 200 passed"});
    EXPECT_EQ(s.Tick().Move(1, 120, 240).Answer(), true);
    s.ExpectActions({"MsgMouseLeftDrag 120 240 passed"});
    s.Rest().ExpectActions({"MsgMouseLeftDrag 120 240 passed"});
    EXPECT_EQ(s.Frame({{1, 130, 240, s.TouchTime(), 0}}, 1).Answer(), false);
    s.ExpectNoActions();  // a record without an event
    EXPECT_EQ(s.Move(1, 150, 240).Tick(200).Mark().Up(1).Answer(), true);
    s.ExpectNoActions();
    EXPECT_EQ(s.State(), touch::GestureEnded);
}

}  // namespace
}  // namespace tests
