// The slot table: places of fingers, and leaving the start.
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
    EXPECT_EQ(full.back().id, 29);
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
    const Row rows[] = {{"30 on both", 30, -30, false}, {"30 the other way", -30, 30, false},
                        {"31 right", 31, 0, true},      {"31 left", -31, 0, true},
                        {"31 up", 0, 31, true},         {"31 down", 0, -31, true}};
    for (const bool on2D : {false, true}) {
        for (const Row& row : rows) {
            SCOPED_TRACE(std::string(row.name) + (on2D ? ", page" : ", model"));
            FingerScript s = FingerScript::OnShapeView(on2D ? PageView("imageview") : OrthographicView());
            s.Down(1, 400, 300).Tick(200).Move(1, 400 + row.dx / 2, 300 + row.dy / 2);
            EXPECT_EQ(s.Answer(), false);
            s.Move(1, 400 + row.dx, 300 + row.dy);  // a slow drift is measured from the start
            EXPECT_EQ(s.Inspect().GetSlots()[0].isMoving, row.moving);
            EXPECT_EQ(s.Answer(), row.moving);
            s.Move(1, 400, 300);
            EXPECT_EQ(s.Inspect().GetSlots()[0].isMoving, row.moving) << "back at the start";
            s.Up(1).Down(1, 400, 300);
            EXPECT_FALSE(s.Inspect().GetSlots()[0].isMoving) << "a new touch";
        }
    }
}

TEST(FingerSlots, APositionWithAZeroCoordinateIsNoMovement) {
    FingerScript s = FingerScript::OnShapeView();
    EXPECT_EQ(s.Down(1, 400, 300).Move(1, 0, 500).Answer(), false);
    EXPECT_FALSE(s.Inspect().GetSlots()[0].isMoving);
}

}  // namespace
}  // namespace tests
