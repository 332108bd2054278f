// The helpers' own test: a story sends what it says, and a check that should fail does.
#include "tests/support/FingerScript.h"
#include "tests/support/Matchers.h"

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <stdexcept>

namespace tests {
namespace {

TEST(Matchers, AcceptUpToTheToleranceAndNameTheNumbersBeyondIt) {
    EXPECT_TRUE(AreNear(dg::DVec3(1, 2, 3), dg::DVec3(1, 2.5, 3), 0.5));
    const testing::AssertionResult beyond = AreNear(dg::DVec3(1, 2, 3), dg::DVec3(1, 2.75, 3), 0.5);
    EXPECT_FALSE(beyond);
    EXPECT_STREQ(beyond.message(), "\n  number 1: 2, expected 2.75, difference -0.75");
    EXPECT_FALSE(AreNear(dg::DVec2{std::nan(""), 0}, dg::DVec2{0, 0}, 1));
    EXPECT_FALSE(AreNear(dg::DVec2{std::nan(""), 0}, dg::DVec2{std::nan(""), 0}, 1));
    EXPECT_FALSE(AreNear(dg::DVec2{0, 0}, dg::DVec3(0, 0, 0), 1));

    dg::Location moved;
    moved.SetPos({0, 0, 0.25});
    EXPECT_FALSE(AreNear(moved, dg::Location(), 0.125));
    dg::Location turned;
    turned.SetMat(dg::FMat33({0, 1, 0}, {-1, 0, 0}, {0, 0, 1}));
    EXPECT_FALSE(AreNear(turned, dg::Location(), 0.125));
}

// The slots show what arrived: every finger that is down has a record in every frame.
TEST(FingerScript, SendsARecordForEveryFingerThatIsDownAndForTheOneThatGoesUp) {
    FingerScript s = FingerScript::OnShapeView();
    s.Down(7, 100, 200).Tick().Down(8, 300, 200);
    EXPECT_EQ(s.Inspect().GetFingerCount(), 2);
    EXPECT_EQ(s.Inspect().GetSlots()[0],
              (touch::TouchState{7, 100, 200, 100, 200, s.TouchTime() - 10, s.TouchTime(), touch::TSMove, false}));
    EXPECT_EQ(s.Inspect().GetSlots()[1],
              (touch::TouchState{8, 300, 200, 0, 0, s.TouchTime(), 0, touch::TSDown, false}));

    s.Tick().Up(7);
    EXPECT_EQ(s.Inspect().GetFingerCount(), 2);
    EXPECT_EQ(s.Inspect().GetSlots()[0].state, touch::TSUp);
    EXPECT_EQ(s.Inspect().GetSlots()[1].state, touch::TSMove);
    s.Rest();
    EXPECT_EQ(s.Inspect().GetFingerCount(), 1);

    EXPECT_THROW(s.Move(7, 1, 1), std::logic_error);
}

TEST(FingerScript, MovesBothClocksTogether) {
    FingerScript s = FingerScript::OnShapeView();
    const std::int64_t host = s.HostTime();
    const std::int32_t touch = s.TouchTime();
    s.Down(1, 100, 100).Hold(25);
    EXPECT_EQ(s.HostTime(), host + 25);
    EXPECT_EQ(s.TouchTime(), touch + 25);
    EXPECT_EQ(s.Inspect().GetCurrentTime(), host + 25);
    EXPECT_EQ(s.Inspect().GetSlots()[0].currentTime, touch + 25);

    s.Wait(30);
    EXPECT_EQ(s.Inspect().GetCurrentTime(), host + 55);
    EXPECT_EQ(s.Inspect().GetSlots()[0].currentTime, touch + 25) << "waiting sends no frames";
}

TEST(FingerScript, TellsCallsOnceAndLeavesTheStatusBarOut) {
    FingerScript s = FingerScript::OnShapeView();
    s.Down(1, 400, 300);
    EXPECT_EQ(s.StatusCalls(),
              (Texts{"SetStatusMessage 1 Touch: navigate", "UpdateStatusMessage", "UpdateStatusMessage"}));
    s.ExpectActions({"StopTransition"}).ExpectNoActions();
    EXPECT_NONFATAL_FAILURE(s.ExpectActions({"StopTransition"}), "actions since the latest mark");
    s.Tick(100).Up(1);
    EXPECT_NONFATAL_FAILURE(s.ExpectNoActions(), "MsgClickLeft 400 300 passed");
}

TEST(FingerScript, SwitchesTheModeAndLeavesAnIdleComponent) {
    FingerScript s = FingerScript::OnShapeView();
    s.SwitchMode();
    EXPECT_FALSE(s.Inspect().GetNavigateMode());
    EXPECT_EQ(s.State(), touch::GestureIdle);
    EXPECT_EQ(s.Inspect().GetSlots()[0].id, -1);
    s.SwitchMode().ExpectNoActions();
    EXPECT_TRUE(s.Inspect().GetNavigateMode());
}

TEST(FingerScript, FailsOnATraceThatWasNotAnnounced) {
    viewer::HostSettings refusing;
    refusing.boundsAnswer = viewer::BoundsAnswer::Refused;
    const auto pinch = [&](const char* announced) {
        FingerScript s = FingerScript::OnShapeView(OrthographicView(), refusing);
        if (announced != nullptr) {
            s.AnnounceTrace(announced);
        }
        s.Down({{1, 400, 300}, {2, 600, 300}}).Tick().Move({{1, 300, 300}, {2, 700, 300}});
    };
    pinch("RequestBounds(): GetBoundingBox() failed.");
    EXPECT_NONFATAL_FAILURE(pinch(nullptr), "texts on the trace channel");
    EXPECT_NONFATAL_FAILURE(pinch("something else"), "texts on the trace channel");
}

}  // namespace
}  // namespace tests
