// The slot table and leaving the start, the gesture's finger list, and what the end of a touch clears.
#include "tests/support/FingerScript.h"

#include <gtest/gtest.h>

#include <cmath>

namespace tests {
namespace {

std::vector<int> IdsOf(const std::list<touch::TouchState>& fingers) {
    std::vector<int> ids;
    for (const touch::TouchState& finger : fingers) {
        ids.push_back(finger.id);
    }
    return ids;
}

TEST(FingerLists, FollowTheFingersThatAreDownFromLeftToRight) {
    FingerScript s = FingerScript::OnShapeView();
    s.Down(1, 500, 300);
    EXPECT_EQ(IdsOf(s.Inspect().GetFingerList()), (std::vector<int>{1}));
    s.Down(2, 450, 300);
    EXPECT_EQ(IdsOf(s.Inspect().GetFingerList()), (std::vector<int>{2, 1}));
    s.Down(3, 475, 300);
    EXPECT_EQ(IdsOf(s.Inspect().GetFingerList()), (std::vector<int>{2, 3, 1}));
    s.Up(3);
    EXPECT_EQ(IdsOf(s.Inspect().GetFingerList()), (std::vector<int>{2, 3, 1})) << "the count is still the old one";
    s.Rest();
    EXPECT_EQ(IdsOf(s.Inspect().GetFingerList()), (std::vector<int>{2, 1}));
}

TEST(FingerLists, FingersInOneColumnKeepTheOrderInWhichTheyCame) {
    FingerScript s = FingerScript::OnShapeView();
    s.Down({{3, 400, 100}, {1, 400, 300}, {2, 400, 200}});
    EXPECT_EQ(IdsOf(s.Inspect().GetFingerList()), (std::vector<int>{3, 1, 2}));
}

TEST(FingerLists, AKnownFingerIsRefreshedButKeepsStartAndMarkOfItsFirstAddition) {
    FingerScript s = FingerScript::OnShapeView();
    s.Down(1, 500, 300).Tick().Move(1, 540, 310);
    ASSERT_TRUE(s.Inspect().GetSlots()[0].isMoving);
    s.Tick().Down(2, 700, 300);
    const touch::TouchState& first = s.Inspect().GetFingerList().front();
    EXPECT_EQ(first,
              (touch::TouchState{1, 500, 300, 540, 310, s.TouchTime() - 20, s.TouchTime(), touch::TSMove, false}));
}

TEST(FingerLists, TheResetClearsTheTouchAndNothingElse) {
    FingerScript s = FingerScript::OnShapeView();
    s.Down({{1, 200, 300}, {2, 660, 300}, {3, 700, 300}}).Tick();
    s.Move({{2, 760, 500}, {3, 800, 500}}).Tick().Move({{2, 810, 500}, {3, 850, 500}});
    ASSERT_EQ(s.Inspect().GetRightHandSize(), 40);
    const std::int64_t lastTouch = s.HostTime();
    ASSERT_TRUE(s.Inspect().IsZoomStarted() && s.Inspect().IsRotationStarted() && s.Inspect().IsViewChanged());
    s.Tick(501);

    const touch::WorkflowInspector state = s.Inspect();
    EXPECT_EQ(state.GetGesture(), touch::GestureNone);
    EXPECT_EQ(state.GetGestureState(), touch::GestureIdle);
    EXPECT_EQ(state.GetLastFingerCount(), 0);
    EXPECT_TRUE(state.GetFirstFingerId() == -1 && state.GetSecondFingerId() == -1);
    EXPECT_FALSE(state.IsZoomStarted() || state.IsRotationStarted() || state.IsViewChanged());
    for (const double measure :
         {state.GetGestureSpan(), state.GetStartGestureSpan(), state.GetGestureAngle(), state.GetLastGestureAngle()}) {
        EXPECT_TRUE(std::isnan(measure));
    }
    for (const dg::DPoint2D& center :
         {state.GetGestureCenter(), state.GetLeftHandCenter(), state.GetRightHandCenter()}) {
        EXPECT_EQ(center, dg::DPoint2D::BAD);
    }
    EXPECT_EQ(state.GetRightHandSize(), 0);
    EXPECT_TRUE(state.GetFingerList().empty() && state.GetLeftHand().empty() && state.GetRightHand().empty());
    EXPECT_EQ(state.GetSlots(), (std::array<touch::TouchState, 10>{}));

    EXPECT_EQ(state.GetFingerCount(), 3);
    EXPECT_EQ(state.GetCurrentTime(), lastTouch + 501);
    EXPECT_TRUE(state.GetNavigateMode());
    EXPECT_TRUE(state.IsTouchSeen());
    EXPECT_EQ(s.Component().GetOriginalViewWidth(), 20);
}

TEST(FingerLists, OnlyTheLiftOfASingleFingerEndsAGesture) {
    FingerScript one = FingerScript::OnShapeView();
    one.Down(1, 400, 300).Tick(200).Move(1, 402, 300);
    EXPECT_EQ(one.State(), touch::GestureRecognized);
    one.Tick().Up(1);
    EXPECT_EQ(one.State(), touch::GestureEnded);
    EXPECT_EQ(one.Inspect().GetLastFingerCount(), 0);
    EXPECT_EQ(one.Inspect().GetTouchUpTime(), one.HostTime());
    one.Down(2, 400, 300);
    EXPECT_EQ(one.Inspect().GetTouchUpTime(), 0);

    FingerScript two = FingerScript::OnShapeView();
    two.Down({{1, 400, 300}, {2, 600, 300}}).Tick(200).Up({1, 2});
    EXPECT_EQ(two.State(), touch::GestureRecognized);
    EXPECT_EQ(two.Inspect().GetLastFingerCount(), 2);
    EXPECT_EQ(two.Inspect().GetTouchUpTime(), 0);
}

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
        EXPECT_EQ(s.Frame({{41, 5, 5, 5, workflow::TouchMove}}, 1).Answer(), false);
        EXPECT_EQ(s.Gesture(), select ? touch::GestureDrag : touch::GestureSpin) << "as without a finger";
        EXPECT_EQ(s.Frame({{41, 500, 5, 5, workflow::TouchMove}}, 1).Answer(), false);
        EXPECT_EQ(s.AnswerTo("MsgDoubleClickLeft"), select ? "passed" : "swallowed") << "the finger counts as not down";
        EXPECT_EQ(s.Frame({{41, 500, 5, 5, workflow::TouchUp}}, 1).Answer(), false);
        s.ExpectNoActions();
    }
}

TEST(FingerSlots, AFingerIsMovingBeyondThirtyPixelsFromItsStartOnEitherAxis) {
    const struct {
        const char* name;
        int dx, dy;
        bool moving;
    } rows[] = {{"30 on both", 30, -30, false}, {"30 the other way", -30, 30, false},
                {"31 right", 31, 0, true},      {"31 left", -31, 0, true},
                {"31 up", 0, 31, true},         {"31 down", 0, -31, true}};
    for (const bool on2D : {false, true}) {
        for (const auto& row : rows) {
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
