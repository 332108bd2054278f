// The gesture's finger list, and what the end of a touch clears.
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

}  // namespace
}  // namespace tests
