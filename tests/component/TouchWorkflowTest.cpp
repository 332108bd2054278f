// What a new component is, what it reads once, and what copying and destroying it does.
#include "touch/TouchWorkflow.h"

#include "host/hxk/WorkflowManager.h"
#include "tests/support/FingerScript.h"

#include <gtest/gtest.h>

namespace tests {
namespace {

using touch::WorkflowInspector;

TEST(TouchWorkflow, StartsIdleWithMeasuresOfZero) {
    const FingerScript s = FingerScript::OnShapeView();
    EXPECT_EQ(s.Component().GetPriority(), hxk::WorkflowManager::TOUCHSCREEN_NAVIGATION);
    EXPECT_EQ(s.State(), touch::GestureIdle);
    EXPECT_FALSE(s.Inspect().IsTouchSeen());
    EXPECT_EQ(s.Inspect().GetFirstFingerId(), -1);
    EXPECT_EQ(s.Inspect().GetGestureSpan(), 0.0);
    EXPECT_EQ(s.Inspect().GetGestureCenter(), dg::DPoint2D::BAD);
    EXPECT_EQ(s.Inspect().GetWorldDistance(), 0.0);
    EXPECT_TRUE(s.Inspect().GetModelBounds().IsEmpty());
}

TEST(TouchWorkflow, TakesNinetySixPixelsPerInchForAnAxisThatReadsZero) {
    for (const int ppiX : {120, 0}) {
        for (const int ppiY : {144, 0}) {
            viewer::HostSettings settings;
            settings.ppiX = ppiX;
            settings.ppiY = ppiY;
            const FingerScript s = FingerScript::OnShapeView(OrthographicView(), settings);
            EXPECT_EQ(s.Inspect().GetPpiX(), ppiX != 0 ? 120 : 96);
            EXPECT_EQ(s.Inspect().GetPpiY(), ppiY != 0 ? 144 : 96);
        }
    }
}

TEST(TouchWorkflow, ReadsSwitchesAndResolutionOnlyOnce) {
    FingerScript s = FingerScript::OnShapeView(OrthographicView(), WithSwitch("HXAPP_DONTZOOM"));
    viewer::HostSettings others;
    others.ppiX = 10;
    others.ppiY = 10;
    const viewer::ReferenceViewer later(others);  // answers for the whole process from now on
    s.Down({{1, 300, 300}, {2, 700, 300}}).Tick().Move({{1, 200, 300}, {2, 800, 300}}).Move(2, 900, 300);
    EXPECT_EQ(s.Inspect().GetPpiX(), 96);
    EXPECT_TRUE(s.Inspect().IsZoomStarted());
    EXPECT_TRUE(s.Calls<viewer::SetWidthCall>().empty()) << "zoom is still switched off";
}

viewer::ViewSpec ViewWithSpinCenter() {
    viewer::ViewSpec view = OrthographicView();
    view.preferences = {{"Model Viewer/display_rotation_center", true}};
    return view;
}

TEST(TouchWorkflow, ACopySharesMarkupAndRequestButHasFingersOfItsOwn) {
    viewer::HostSettings settings;
    settings.ppiX = 120;
    settings.boundsAnswer = viewer::BoundsAnswer::Never;
    FingerScript s = FingerScript::OnShapeView(ViewWithSpinCenter(), settings);
    s.Down({{1, 300, 300}, {2, 700, 300}}).Move({{1, 200, 300}, {2, 800, 300}}).Mark();
    ASSERT_NE(s.Inspect().GetBoundsEvent(), nullptr);

    du::SmartPtr<touch::TouchWorkflow> copy(new touch::TouchWorkflow(s.Component()));
    const WorkflowInspector copied(*copy);
    EXPECT_EQ(copied.GetSpinCenterMarkup(), s.Inspect().GetSpinCenterMarkup());
    EXPECT_EQ(copied.GetBoundsEvent(), s.Inspect().GetBoundsEvent());
    EXPECT_EQ(copied.GetPpiX(), 120);
    EXPECT_TRUE(copied.IsZoomStarted());
    EXPECT_EQ(copied.GetSlots(), s.Inspect().GetSlots());
    EXPECT_EQ(copied.GetFingerList(), s.Inspect().GetFingerList());

    s.Up({1, 2}).Wait(600);
    EXPECT_TRUE(s.Inspect().GetFingerList().empty());
    EXPECT_EQ(copied.GetFingerList().size(), 2U);
    EXPECT_EQ(copied.GetLeftHand().size(), 1U);

    s.Mark();
    copy = nullptr;
    s.ExpectNoActions();  // neither cancelled nor removed anything
    EXPECT_NE(s.Inspect().GetBoundsEvent(), nullptr);
}

TEST(TouchWorkflow, AssigningReplacesTheTargetsStateAndReleasesWhatItHeld) {
    FingerScript source = FingerScript::OnShapeView(ViewWithSpinCenter());
    source.Down({{1, 300, 300}, {2, 700, 300}, {3, 800, 300}});
    const du::SmartPtr<touch::TouchWorkflow> target(new touch::TouchWorkflow(du::Symbol("target")));
    target->SetView(source.Component().GetView());
    const WorkflowInspector state(*target);
    ASSERT_NE(state.GetSpinCenterMarkup(), nullptr);
    ASSERT_NE(state.GetSpinCenterMarkup(), source.Inspect().GetSpinCenterMarkup());

    *target = source.Component();
    EXPECT_EQ(target->GetName(), du::Symbol("touch"));
    EXPECT_EQ(state.GetSpinCenterMarkup(), source.Inspect().GetSpinCenterMarkup());
    EXPECT_EQ(state.GetFingerList().size(), 3U);
    EXPECT_EQ(state.GetGesture(), touch::GesturePanZoomRotate);

    const touch::TouchWorkflow& same = *target;
    *target = same;
    EXPECT_EQ(state.GetFingerList().size(), 3U);
    EXPECT_EQ(target->GetReferenceCount(), 1);
}

TEST(TouchWorkflow, DestroyingItLeavesAShownMarkupInItsView) {
    FingerScript s = FingerScript::OnShapeView(ViewWithSpinCenter());
    s.Down(1, 400, 300).Move(1, 440, 300).Move(1, 480, 300);
    ASSERT_EQ(s.View().markups.size(), 3U);
    s.Mark();
    { const du::SmartPtr<touch::TouchWorkflow> copy(new touch::TouchWorkflow(s.Component())); }
    EXPECT_EQ(s.View().markups.size(), 3U);
    s.ExpectNoActions();
}

}  // namespace
}  // namespace tests
