// Which mouse messages are echoes of a touch.
#include "tests/support/FingerScript.h"

#include <gtest/gtest.h>

#include <string>

namespace tests {
namespace {

constexpr const char* Handlers[] = {"MsgClickLeft", "MsgDoubleClickLeft",   "MsgMouseLeftDown", "MsgMouseLeftUp",
                                    "MsgMouseMove", "MsgMouseInitLeftDrag", "MsgMouseLeftDrag"};

FingerScript& Select(FingerScript& s) {
    return s.SwitchMode();
}
FingerScript& Page(FingerScript& s) {
    return s.SetView(PageView("ecadpcbview"));
}
FingerScript& One(FingerScript& s) {
    return s.Down(1, 400, 300).Tick(300);
}
FingerScript& Two(FingerScript& s) {
    return s.Down({{1, 400, 300}, {2, 500, 300}}).Tick(300);
}
// Only the times of a one-finger touch that begins, no gesture.
FingerScript& Begin(FingerScript& s) {
    s.Component().SingleFinger2DInitialize(1, 1);
    return s;
}

struct StateRow {
    const char* name;
    const char* answers;  // for each handler: s swallowed, p passed
    void (*story)(FingerScript&);
};

// The handlers in order: click, double click, down, up, move, start of a drag, drag.
const StateRow StateRows[] = {
    {"idle", "ppppppp", [](FingerScript&) {}},
    {"first frame of a spin", "spsssss", [](FingerScript& s) { One(s); }},
    {"spin", "sssssss", [](FingerScript& s) { One(s).Rest(); }},
    {"several fingers", "spsssss", [](FingerScript& s) { Two(s).Rest(); }},
    {"2D pan", "spsssss", [](FingerScript& s) { One(Page(s)).Rest(); }},
    {"2D zoom", "spsssss", [](FingerScript& s) { Two(Page(s)).Rest(); }},
    {"spin lifted 49 ms ago", "spsssss", [](FingerScript& s) { One(s).Up(1).Tick(49); }},
    {"spin lifted 50 ms ago", "spppppp", [](FingerScript& s) { One(s).Up(1).Tick(50); }},
    {"2D pan lifted 50 ms ago", "spppppp", [](FingerScript& s) { One(Page(s)).Up(1).Tick(50); }},
    {"tapped 50 ms ago", "spppppp", [](FingerScript& s) { s.Down(1, 400, 300).Tick(50).Up(1).Tick(50); }},
    {"several lifted together", "spsssss",
     [](FingerScript& s) {
         Two(s).Up({1, 2}).Tick(50);
     }},
    {"touch ended by silence", "ppppppp", [](FingerScript& s) { One(s).Tick(501); }},
    {"begun 49 ms ago, no gesture", "ppspssp", [](FingerScript& s) { Begin(s).Tick(49); }},
    {"begun 50 ms ago, no gesture", "ppppppp", [](FingerScript& s) { Begin(s).Tick(50); }},
    {"begun anew 10 ms after a lift", "spspssp", [](FingerScript& s) { Begin(One(s).Up(1)).Tick(10); }},
    {"host clock at 49 ms, no touch", "ppsssss", [](FingerScript& s) { s.Viewer().Tick(49, 10); }},
    {"host clock at 50 ms, no touch", "ppppppp", [](FingerScript& s) { s.Viewer().Tick(50, 10); }},
    {"select: idle", "ppppppp", [](FingerScript& s) { Select(s); }},
    {"select: dragging", "spppppp", [](FingerScript& s) { One(Select(s)).Rest(); }},
    {"select: drag begun 10 ms after a lift", "spppppp",
     [](FingerScript& s) { One(Select(s)).Up(1).Tick().Down(2, 400, 300); }},
    {"select: several fingers", "ppppsss", [](FingerScript& s) { Two(Select(s)).Rest(); }},
    {"select: 2D zoom", "ppppsss", [](FingerScript& s) { Two(Page(Select(s))).Rest(); }},
    {"select: drag lifted 49 ms ago", "ppppsps", [](FingerScript& s) { One(Select(s)).Up(1).Tick(49); }},
    {"select: drag lifted 50 ms ago", "ppppppp", [](FingerScript& s) { One(Select(s)).Up(1).Tick(50); }},
    {"select: begun 49 ms ago, no gesture", "ppppspp", [](FingerScript& s) { Begin(Select(s)).Tick(49); }},
    {"markup: spin that began before", "ppppppp", [](FingerScript& s) { One(s).Rest().Mode("enter_markup_mode"); }},
    {"markup: finger just down", "ppppppp", [](FingerScript& s) { One(s.Mode("enter_markup_mode")); }},
};

TEST(MouseMessages, AreSwallowedWhereTheyEchoATouch) {
    for (const StateRow& row : StateRows) {
        std::string answers;
        for (const char* handler : Handlers) {
            FingerScript s = FingerScript::OnShapeView();
            row.story(s);
            answers += s.AnswerTo(handler).front();
        }
        EXPECT_EQ(answers, row.answers) << row.name;
    }
}

TEST(MouseMessages, TheComponentsOwnClickPassesOnceAndAStrayOneClearsTheGesture) {
    FingerScript s = FingerScript::OnShapeView();
    s.Down(1, 400, 300).Tick(100).Up(1);
    s.ExpectMessages({"MsgClickLeft 400 300 passed"});
    EXPECT_FALSE(s.Inspect().IsTapClickPending());
    const auto slots = s.Inspect().GetSlots();
    EXPECT_EQ(s.AnswerTo("MsgClickLeft"), "swallowed");
    EXPECT_EQ(s.State(), touch::GestureIdle);
    EXPECT_EQ(s.Gesture(), touch::GestureNone);
    EXPECT_EQ(s.Inspect().GetGestureCenter(), dg::DPoint2D::BAD);
    EXPECT_EQ(s.Inspect().GetSlots(), slots);
    EXPECT_EQ(s.AnswerTo("MsgClickLeft"), "passed");
}

// In multi-select mode nobody takes the mark back, so the reset does.
TEST(MouseMessages, AClickThatIsStillPendingIsForgottenByTheReset) {
    FingerScript s = FingerScript::OnShapeView();
    s.SwitchMode().Down(1, 400, 300).Tick(100).Up(1);
    EXPECT_TRUE(s.Inspect().IsTapClickPending());
    s.Tick(501);
    EXPECT_FALSE(s.Inspect().IsTapClickPending());
}

TEST(MouseMessages, ADoubleClickWhileTheFingerIsDownSwallowsTheNextDownAndPassesTheNextUp) {
    for (const bool select : {false, true}) {
        SCOPED_TRACE(select ? "select" : "navigate");
        FingerScript s = FingerScript::OnShapeView();
        (select ? s.SwitchMode() : s).Down(1, 400, 300);
        EXPECT_EQ(s.AnswerTo("MsgDoubleClickLeft"), "passed");
        s.Tick(501);  // ends the gesture, not the mark
        EXPECT_EQ(s.AnswerTo("MsgMouseLeftDown"), "swallowed");
        EXPECT_EQ(s.AnswerTo("MsgMouseLeftDown"), "swallowed");
        EXPECT_EQ(s.AnswerTo("MsgMouseLeftUp"), "passed");
        EXPECT_EQ(s.AnswerTo("MsgMouseLeftDown"), "passed");
    }
}

TEST(MouseMessages, MarkupModeChangesNothing) {
    FingerScript s = FingerScript::OnShapeView();
    s.Down(1, 400, 300).Tick(100).Up(1).Mode("enter_markup_mode");
    EXPECT_EQ(s.AnswerTo("MsgClickLeft"), "passed");
    EXPECT_EQ(s.Gesture(), touch::GestureTap) << "not cleared";
    s.Down(2, 400, 300);
    EXPECT_EQ(s.AnswerTo("MsgDoubleClickLeft"), "passed");
    s.Mode("leave_markup_mode").Tick(501);
    EXPECT_EQ(s.AnswerTo("MsgMouseLeftDown"), "passed") << "not marked";
}

}  // namespace
}  // namespace tests
