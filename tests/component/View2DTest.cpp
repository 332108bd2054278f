// Which gesture the fingers on a 2D view make, and its pan and zoom. The page has 800 x 400 pixels and shows 16 units:
// 0.02 a pixel.
#include "tests/support/FingerScript.h"
#include "tests/support/Matchers.h"

#include <gtest/gtest.h>

namespace tests {
namespace {

TEST(View2DRecognizer, FingersAndModeChooseTheGesture) {
    FingerScript s = FingerScript::On2DView();
    s.Down(1, 300, 200);
    EXPECT_EQ(s.Gesture(), touch::Gesture2DPan);
    s.Down(2, 500, 200);
    EXPECT_EQ(s.Gesture(), touch::Gesture2DZoomPan);
    s.Up(1).Rest();
    EXPECT_EQ(s.Gesture(), touch::Gesture2DPan);

    // A drawing has no modes: the mode is switched where there are some.
    s.Up(2).SetView(OrthographicView()).SwitchMode().SetView(PageView("imageview"));
    s.Down(1, 300, 200).ExpectMessages({"MsgMouseLeftDown 300 200 passed"});
    EXPECT_EQ(s.Gesture(), touch::GestureDrag);
    EXPECT_EQ(s.Tick().Move(1, 350, 200).Answer(), true);
    s.ExpectActions({"MsgMouseLeftDrag 350 200 passed"});
    s.Down(2, 500, 200);
    EXPECT_EQ(s.Gesture(), touch::Gesture2DZoomPan);
}

TEST(View2DRecognizer, APinchIsFoundWithoutGateAndWithoutBoundsAndATwistNever) {
    const struct {
        const char* name;
        Place to;
        bool pinch;
    } rows[] = {{"ratio exactly 0.85", {2, 300, 200}, false},
                {"ratio just below 0.85", {2, 301, 200}, true},
                {"ratio 1.15 and less than an inch", {2, 248, 200}, false},
                {"ratio above 1.15 and less than an inch", {2, 247, 200}, true},
                {"quarter turn", {2, 100, 370}, false}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        FingerScript s = FingerScript::On2DView();
        s.Down({{1, 100, 200}, {2, 270, 200}}).Move({{1, 100, 200}, row.to});
        EXPECT_EQ(s.Inspect().IsZoomStarted(), row.pinch);
        EXPECT_FALSE(s.Inspect().IsRotationStarted());
        EXPECT_TRUE(s.Calls<viewer::GetBoundingBoxCall>().empty());
    }
}

TEST(View2DRecognizer, MarkupModeDoesNothing) {
    FingerScript s = FingerScript::On2DView();
    EXPECT_EQ(s.Mode("enter_markup_mode").Down(1, 300, 200).Answer(), false);
    EXPECT_EQ(s.Gesture(), touch::GestureMarkup);
    EXPECT_EQ(s.Move(1, 400, 200).Answer(), false);
    s.Down(2, 500, 200).Move(2, 700, 200).ExpectNoActions();
}

TEST(View2DNavigation, APageMovesByExactlyWhatTheFingerCovers) {
    const struct {
        const char* name;
        int dx, dy;
        bool rotated;
        dg::DVec3 travel;
    } rows[] = {{"half the width", 400, 0, false, {-8, 0, 0}},
                {"a quarter of the height", 0, 100, false, {0, -2, 0}},
                {"left and down", -40, -20, false, {0.8, 0.4, 0}},
                {"rotated page", 40, 20, true, {0.4, -0.8, 0}}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        viewer::ViewSpec view = PageView("drawingview");
        if (row.rotated) {
            view.placement = dg::Location({0, 1, 0}, {-1, 0, 0}, {0, 0, 1}, {3, 4, 0});
        }
        FingerScript s = FingerScript::OnShapeView(view, WithSwitch("HXAPP_DONTPAN"));
        EXPECT_EQ(s.Down(1, 300, 200).Answer(), true);
        s.ExpectNoActions();
        EXPECT_EQ(s.Tick().Move(1, 300 + row.dx, 200 + row.dy).Answer(), true);
        s.ExpectActions({"SetPosition"});
        EXPECT_TRUE(s.Inspect().IsViewChanged());
        EXPECT_TRUE(AreNear(s.PagePosition(), dg::DPoint3D(3, 4, 0) + row.travel, 1e-12));
        s.Move(1, 301, 200);  // the finger has left its start for good
        EXPECT_TRUE(AreNear(s.PagePosition(),
                            dg::DPoint3D(3, 4, 0) + (row.rotated ? dg::DVec3(0, -0.02, 0) : dg::DVec3(-0.02, 0, 0)),
                            1e-12));
    }
}

TEST(View2DNavigation, TwoFingersZoomFromTheWidthAtTheStartAndPan) {
    for (const char* name : {"", "HXAPP_DONTZOOM"}) {
        SCOPED_TRACE(name);
        const bool zooms = *name == '\0';
        FingerScript s = FingerScript::On2DView("ecadpcbview", WithSwitch(name));
        s.Down({{1, 300, 200}, {2, 400, 200}}).Move({{1, 290, 200}, {2, 410, 200}});
        s.ExpectNoActions();  // the pinch begins here, at 120 pixels
        s.Move({{1, 230, 200}, {2, 470, 200}});
        s.ExpectActions(zooms ? Texts{"SetOrthoWidth", "SetPosition"} : Texts{"SetPosition"});
        EXPECT_DOUBLE_EQ(s.View().orthoWidth, zooms ? 8 : 16);
        EXPECT_TRUE(AreNear(s.PagePosition(), dg::DPoint3D(3, 4, 0), 1e-12)) << "the middle has not moved";
        s.Move({{1, 260, 200}, {2, 500, 200}});
        EXPECT_DOUBLE_EQ(s.View().orthoWidth, zooms ? 8 : 16) << "not half of the half";
        EXPECT_TRUE(AreNear(s.PagePosition(), dg::DPoint3D(zooms ? 2.7 : 2.4, 4, 0), 1e-12));
        s.Move({{1, 320, 200}, {2, 440, 200}}).Mark();
        s.Rest();
        EXPECT_TRUE(s.Calls<viewer::SetWidthCall>().empty()) << "a ratio of 1 changes nothing";
    }
}

// The leftmost finger stays within 30 pixels of its start, so nothing pans.
TEST(View2DNavigation, AZoomAloneChangesTheView) {
    FingerScript s = FingerScript::On2DView();
    s.Down({{1, 300, 200}, {2, 400, 200}}).Move({{1, 290, 200}, {2, 410, 200}});
    EXPECT_FALSE(s.Inspect().IsViewChanged());
    s.Move({{1, 290, 200}, {2, 530, 200}}).ExpectActions({"SetOrthoWidth"});
    EXPECT_TRUE(s.Inspect().IsViewChanged());
}

// They ask for an infinite width, which the view refuses.
TEST(View2DNavigation, FingersThatMeetInOnePixelLeaveTheWidthAsItIs) {
    FingerScript s = FingerScript::On2DView();
    s.Down({{1, 300, 200}, {2, 400, 200}}).Move({{1, 310, 200}, {2, 390, 200}}).Move({{1, 330, 200}, {2, 370, 200}});
    EXPECT_DOUBLE_EQ(s.View().orthoWidth, 32);
    s.Move({{1, 350, 200}, {2, 350, 200}});
    EXPECT_DOUBLE_EQ(s.View().orthoWidth, 32);
}

TEST(View2DNavigation, AChangeOfFingersTakesNewReferences) {
    FingerScript s = FingerScript::On2DView();
    s.Down({{1, 300, 200}, {2, 400, 200}}).Move({{1, 290, 200}, {2, 410, 200}}).Move({{1, 230, 200}, {2, 470, 200}});
    s.Down(3, 600, 200);
    const dg::DPoint3D before = s.PagePosition();
    s.Rest();
    EXPECT_DOUBLE_EQ(s.View().orthoWidth, 8);
    EXPECT_EQ(s.PagePosition(), before);
    s.Move(3, 1210, 200);  // the hands were 305 pixels apart and are 610
    EXPECT_DOUBLE_EQ(s.View().orthoWidth, 4);
}

TEST(View2DNavigation, AFrameOnWhichAFingerLiftsMovesNothing) {
    FingerScript s = FingerScript::On2DView();
    s.Down({{1, 300, 200}, {2, 400, 200}}).Tick().Move({{1, 200, 200}, {2, 500, 200}}).Tick().Mark();
    s.Frame({{1, 100, 200, s.TouchTime(), workflow::TouchMove}, {2, 600, 200, s.TouchTime(), workflow::TouchUp}}, 2);
    EXPECT_EQ(s.Answer(), false);
    s.ExpectNoActions();
}

TEST(View2DNavigation, APositionWithAZeroCoordinateDoesNotPan) {
    FingerScript s = FingerScript::On2DView();
    EXPECT_EQ(s.Down(1, 300, 200).Move(1, 0, 350).Answer(), false);
    s.ExpectNoActions();
}

}  // namespace
}  // namespace tests
