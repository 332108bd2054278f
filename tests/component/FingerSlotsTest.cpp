// The slot table: places of fingers, leaving the start, and the moments after a touch begins or ends.
#include "tests/support/FingerScript.h"

#include <gtest/gtest.h>

namespace tests {
namespace {

TEST(FingerSlots, FillFromTheFrontAndKeepLiftedFingersUntilTheReset) {
    FingerScript s = FingerScript::OnShapeView();
    s.Down(5, 100, 100).Down(9, 200, 100).Up(5).Down(3, 300, 100);
    EXPECT_EQ(s.Inspect().GetSlots()[0].id, 5);
    EXPECT_EQ(s.Inspect().GetSlots()[0].state, touch::TSUp);
    EXPECT_EQ(s.Inspect().GetSlots()[1].id, 9);
    EXPECT_EQ(s.Inspect().GetSlots()[2].id, 3);

    s.Up({9, 3}).Wait(600).Down(9, 100, 100);
    EXPECT_EQ(s.Inspect().GetSlots()[0].id, 9);
    EXPECT_EQ(s.Inspect().GetSlots()[1].id, -1);
}

TEST(FingerSlots, HoldTenFingersAndDropAnEleventh) {
    FingerScript s = FingerScript::OnShapeView();
    for (int id = 20; id < 30; ++id) {
        s.Down(id, 30 * id, 100);
    }
    const auto full = s.Inspect().GetSlots();
    for (int id = 20; id < 30; ++id) {
        EXPECT_EQ(full[static_cast<std::size_t>(id - 20)].id, id);
    }
    s.Frame({{40, 5, 5, 5, 2}}, 2);
    EXPECT_EQ(s.Inspect().GetSlots(), full);
    s.Frame({{25, 5, 5, 5, 1}}, 2);
    EXPECT_EQ(s.Inspect().GetSlots()[5].currentX, 5);
}

TEST(FingerSlots, AFingerWithoutASlotDoesNothing) {
    for (const bool select : {false, true}) {
        SCOPED_TRACE(select ? "select" : "navigate");
        FingerScript s = FingerScript::OnShapeView();
        if (select) {
            s.SwitchMode();
        }
        for (int id = 20; id < 30; ++id) {
            s.Down(id, 30 * id, 100);
        }
        for (int id = 20; id < 30; ++id) {
            s.Up(id).Tick(200);
        }
        s.Mark();
        EXPECT_EQ(s.Frame({{41, 5, 5, 5, viewer::TouchMove}}, 1).Answer(), false);
        EXPECT_EQ(s.Gesture(), select ? touch::GestureDrag : touch::GestureSpin) << "as without a finger";
        EXPECT_EQ(s.Frame({{41, 500, 5, 5, viewer::TouchMove}}, 1).Answer(), false);
        EXPECT_EQ(s.AnswerTo("MsgDoubleClickLeft"), select ? "passed" : "swallowed") << "the finger counts as not down";
        EXPECT_EQ(s.Frame({{41, 500, 5, 5, viewer::TouchUp}}, 1).Answer(), false);
        s.ExpectNoActions();
    }
}

TEST(FingerSlots, AFingerIsMovingBeyondThirtyPixelsFromItsStartOnEitherAxis) {
    struct Row {
        const char* name;
        int dx, dy;
        bool moving;
    };
    const Row rows[] = {{"at rest", 0, 0, false},          {"29 to the right", 29, 0, false},
                        {"30 to the right", 30, 0, false}, {"31 to the right", 31, 0, true},
                        {"30 to the left", -30, 0, false}, {"31 to the left", -31, 0, true},
                        {"30 up", 0, 30, false},           {"31 up", 0, 31, true},
                        {"30 down", 0, -30, false},        {"31 down", 0, -31, true},
                        {"30 on both", 30, -30, false},    {"31 on both", -31, 31, true}};
    for (const bool on2D : {false, true}) {
        for (const Row& row : rows) {
            SCOPED_TRACE(std::string(row.name) + (on2D ? ", page" : ", model"));
            FingerScript s = FingerScript::OnShapeView(on2D ? PageView("imageview") : OrthographicView());
            s.Down(1, 400, 300).Tick(200).Move(1, 400 + row.dx, 300 + row.dy);
            EXPECT_EQ(s.Inspect().GetSlots()[0].isMoving, row.moving);
            EXPECT_EQ(s.Answer(), row.moving);
            s.Move(1, 400, 300);
            EXPECT_EQ(s.Inspect().GetSlots()[0].isMoving, row.moving) << "back at the start";
            s.Up(1).Down(1, 400, 300);
            EXPECT_FALSE(s.Inspect().GetSlots()[0].isMoving) << "a new touch";
        }
    }
}

TEST(FingerSlots, ASlowDriftIsMeasuredFromTheStart) {
    FingerScript s = FingerScript::OnShapeView();
    s.Down(1, 400, 300).Tick(200);
    for (int x = 401; x <= 430; ++x) {
        EXPECT_EQ(s.Tick().Move(1, x, 300).Answer(), false);
    }
    EXPECT_EQ(s.Tick().Move(1, 431, 300).Answer(), true);
}

TEST(FingerSlots, APositionWithAZeroCoordinateIsNoMovement) {
    FingerScript s = FingerScript::OnShapeView();
    s.Down(1, 400, 300).Move(1, 0, 500);
    EXPECT_EQ(s.Answer(), false);
    s.Tick();
    EXPECT_FALSE(s.Inspect().GetSlots()[0].isMoving);
}

// Seen by the echo of the system's mouse, which is swallowed for a moment.
TEST(FingerSlots, ATouchHasJustBegunOrEndedForLessThanFiftyMilliseconds) {
    for (const int after : {49, 50}) {
        SCOPED_TRACE(after);
        const char* expected = after < 50 ? "swallowed" : "passed";
        FingerScript begun = FingerScript::OnShapeView();
        begun.Component().SingleFinger2DInitialize(400, 300);
        begun.Tick(after);
        EXPECT_EQ(begun.AnswerTo("MsgMouseMove"), expected);
        EXPECT_EQ(begun.AnswerTo("MsgMouseLeftUp"), "passed") << "nothing has ended";

        FingerScript ended = FingerScript::OnShapeView();
        ended.Down(1, 400, 300).Tick(300).Up(1).Tick(after);
        EXPECT_EQ(ended.AnswerTo("MsgMouseMove"), expected);
        EXPECT_EQ(ended.AnswerTo("MsgMouseLeftUp"), expected);
    }
}

}  // namespace
}  // namespace tests
