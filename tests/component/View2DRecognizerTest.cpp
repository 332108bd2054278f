// Which gesture the fingers on a 2D view make.
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

TEST(View2DRecognizer, TheCircleFollowsOneFinger) {
    FingerScript s = FingerScript::On2DView();
    s.Down(1, 300, 200).Tick().Move(1, 310, 205);
    EXPECT_TRUE(AreNear(s.Inspect().GetGestureCenter(), dg::DPoint2D(310, 205), 0));
    EXPECT_EQ(s.Inspect().GetGestureSpan(), 0);
}

TEST(View2DRecognizer, APinchIsFoundWithoutGateAndWithoutBoundsAndATwistNever) {
    struct Row {
        const char* name;
        Place to;
        bool pinch;
    };
    const Row rows[] = {{"ratio exactly 0.85", {2, 300, 200}, false},
                        {"ratio just below 0.85", {2, 301, 200}, true},
                        {"ratio 1.15 and less than an inch", {2, 248, 200}, false},
                        {"ratio above 1.15 and less than an inch", {2, 247, 200}, true},
                        {"quarter turn", {2, 100, 370}, false}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        FingerScript s = FingerScript::On2DView();
        s.Down({{1, 100, 200}, {2, 270, 200}}).Move({{1, 100, 200}, row.to});
        EXPECT_EQ(s.Inspect().IsZoomStarted(), row.pinch);
        EXPECT_FALSE(s.Inspect().IsRotationStarted());
        EXPECT_TRUE(s.Calls<viewer::GetBoundingBoxCall>().empty());
    }
}

TEST(View2DRecognizer, MarkupModeDoesNothingAndDoesNotStartFromIdle) {
    FingerScript s = FingerScript::On2DView();
    EXPECT_EQ(s.Mode("enter_markup_mode").Down(1, 300, 200).Answer(), false);
    EXPECT_EQ(s.Gesture(), touch::GestureMarkup);
    EXPECT_EQ(s.Move(1, 400, 200).Answer(), false);
    s.Down(2, 500, 200).Move(2, 700, 200).ExpectNoActions();

    for (const bool markup : {false, true}) {
        FingerScript idle = FingerScript::On2DView();
        idle.Down(1, 300, 200).Tick(501).Mode(markup ? "enter_markup_mode" : "leave_markup_mode").Frame({}, 0);
        EXPECT_EQ(idle.State(), markup ? touch::GestureIdle : touch::GestureStarted);
    }
}

}  // namespace
}  // namespace tests
