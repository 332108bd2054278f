// The camera snapshot and the way from pixels to the view plane.
#include "tests/support/FingerScript.h"
#include "tests/support/Matchers.h"

#include <gtest/gtest.h>

namespace tests {
namespace {

TEST(ViewGeometry, IsZeroBeforeTheFirstGestureAndThenTakenByEveryGestureAtItsStart) {
    viewer::ViewSpec view = PerspectiveView();
    view.camera.location = dg::Location({0, 1, 0}, {0, 0, 1}, {1, 0, 0}, {9, 8, 7});
    FingerScript s = FingerScript::OnShapeView(view);
    const touch::TouchWorkflow& component = s.Component();
    EXPECT_TRUE(AreNear(component.GetPixelCenter(), dg::DVec2{0, 0}, 0));
    EXPECT_EQ(component.GetViewWidth(), 0);
    s.Down(1, 400, 300);
    EXPECT_TRUE(AreNear(component.GetPixelCenter(), dg::DVec2{500, 300}, 0));
    EXPECT_EQ(component.GetViewWidth(), 1);
    EXPECT_EQ(component.GetOriginalViewWidth(), 0) << "a matter of several fingers";
    EXPECT_EQ(component.GetCameraLocation(), view.camera.location);

    viewer::ViewChange change;
    change.camera = OrthographicView().camera;
    s.Change(change).Tick().Up(1);
    EXPECT_TRUE(component.IsPerspective() && !component.IsOrthographic()) << "not in between";
    s.Down(1, 400, 300);
    EXPECT_TRUE(component.IsOrthographic());
    EXPECT_EQ(component.GetViewWidth(), 20);
}

TEST(ViewGeometry, TheOriginalWidthIsThatOfTheGesturesStartAndCanBeReplaced) {
    FingerScript s = FingerScript::OnShapeView();
    s.Down({{1, 300, 300}, {2, 700, 300}}).Move({{1, 200, 300}, {2, 800, 300}});
    s.Move({{1, 200, 300}, {2, 900, 300}});
    EXPECT_EQ(s.Component().GetOriginalViewWidth(), 20);
    s.Component().SetOriginalViewWidth(40);
    EXPECT_EQ(s.Component().GetOriginalViewWidth(), 40);
    const double narrow = s.Calls<viewer::SetWidthCall>().back().width;
    s.Rest();
    EXPECT_DOUBLE_EQ(s.Calls<viewer::SetWidthCall>().back().width, 2 * narrow);
}

// A pinch that keeps its centre travels along the ray through that centre: the travel shows the view-plane point, as if
// the plane were at distance 1.
TEST(ViewGeometry, PixelsMapLinearlyToTheWindowWithRowZeroAtTheBottom) {
    const struct {
        const char* name;
        int x, y;
        bool upright;  // one finger above the other
        double u, v;
    } rows[] = {{"left edge", 1, 300, true, -3.9875, 1},
                {"lower edge", 400, 1, false, 1, -3 + 8 / 600.0},
                {"upper right corner", 800, 600, false, 6, 5},
                {"middle of the pixels", 400, 300, false, 1, 1},
                {"left of the middle, high", 200, 450, true, -1.5, 3},
                {"outside", 1000, 750, false, 8.5, 7}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        viewer::ViewSpec view = PerspectiveView();
        view.width = 800;
        view.camera.left = -4;
        view.camera.right = 6;
        view.camera.bottom = -3;
        view.camera.top = 5;
        view.camera.distance = 2;
        FingerScript s = FingerScript::OnShapeView(view);
        const auto place = [&](int id, int offset) {
            return row.upright ? Place{id, row.x, row.y + offset} : Place{id, row.x + offset, row.y};
        };
        s.Down({place(1, -100), place(2, 100)}).Move({place(1, -120), place(2, 120)}).Tick();
        s.Move({place(1, -130), place(2, 130)});
        const dg::DVec3 travel = s.CameraLocation().GetPos() - dg::DPoint3D(0, 0, 20);
        ASSERT_LT(travel.z, 0);
        EXPECT_TRUE(AreNear(travel * (-1 / travel.z), dg::DVec3(row.u, row.v, -1), 1e-9));
    }
}

}  // namespace
}  // namespace tests
