// The tick: clock, order of its work, and the end of a touch by silence.
#include "tests/support/FingerScript.h"

#include <gtest/gtest.h>

#include <limits>

namespace tests {
namespace {

TEST(Timer, SilenceEndsATouchOnlyBeyondHalfASecond) {
    for (const int silence : {500, 501}) {
        SCOPED_TRACE(silence);
        const bool ended = silence > 500;
        FingerScript s = FingerScript::OnShapeView();
        s.Down(1, 400, 300).Tick(100).Move(1, 405, 300);
        EXPECT_EQ(s.Tick(silence).Answer(), false);
        EXPECT_EQ(s.Inspect().IsTouchActive(), !ended);
        EXPECT_EQ(s.Gesture(), ended ? touch::GestureNone : touch::GestureSpin);
        EXPECT_EQ(s.Inspect().GetSlots()[0].id, ended ? -1 : 1);
    }
}

TEST(Timer, SilenceIsCountedFromTheLatestFrameAndEndsATouchOnce) {
    FingerScript s = FingerScript::OnShapeView();
    s.Down(1, 400, 300).Wait(400).Rest().Wait(400);
    EXPECT_TRUE(s.Inspect().IsTouchActive());
    s.Wait(200);
    EXPECT_FALSE(s.Inspect().IsTouchActive());

    s.Rest();
    EXPECT_TRUE(s.Inspect().IsTouchActive());
    EXPECT_EQ(s.Gesture(), touch::GestureSpin) << "a finger that is still there starts anew";
}

TEST(Timer, TouchesBeforeTheFirstTickAreNotEndedBySilence) {
    FingerScript s = FingerScript::OnShapeView();
    s.Viewer().Tick(0, 10);
    s.Down(1, 400, 300);
    s.Viewer().Tick(5000, 10);
    EXPECT_TRUE(s.Inspect().IsTouchActive());
    s.Rest().Tick(600);
    EXPECT_FALSE(s.Inspect().IsTouchActive());
}

TEST(Timer, TheClockStandsStillInMarkupMode) {
    FingerScript s = FingerScript::OnShapeView();
    const std::int64_t before = s.Inspect().GetCurrentTime();
    s.Mode("enter_markup_mode").Down(1, 400, 300);
    EXPECT_EQ(s.Tick(1000).Answer(), false);
    EXPECT_EQ(s.Inspect().GetCurrentTime(), before);
    EXPECT_TRUE(s.Inspect().IsTouchActive());
    s.Mode("leave_markup_mode").Tick();
    EXPECT_EQ(s.Inspect().GetCurrentTime(), s.HostTime());
    EXPECT_FALSE(s.Inspect().IsTouchActive());
}

// The latest record says that the finger has been held for 1050 ms, and the next tick comes 600 ms after it.
TEST(Timer, AHoldIsSeenBeforeTheSilenceClearsIt) {
    FingerScript s = FingerScript::OnShapeView();
    s.Down(1, 400, 300).Mark();
    s.Frame({{1, 401, 300, s.TouchTime() + 1050, workflow::TouchMove}}, 1).Tick(600);
    s.ExpectMessages({"MsgMouseRightDown 401 300 unheard", "MsgMouseRightUp 401 300 unheard"});
    EXPECT_EQ(s.State(), touch::GestureIdle);
}

}  // namespace
}  // namespace tests
