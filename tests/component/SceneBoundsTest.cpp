// The request for the model's box, and every way in which it can end.
#include "host/workflow/ConstStrings.h"
#include "tests/support/FingerScript.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>

namespace tests {
namespace {

using viewer::BoundsAnswer;

const char RefusedTrace[] = "RequestBounds(): GetBoundingBox() failed.";

viewer::HostSettings Answering(BoundsAnswer answer) {
    viewer::HostSettings settings;
    settings.boundsAnswer = answer;
    return settings;
}

FingerScript& Pinch(FingerScript& s) {
    return s.Down({{1, 350, 300}, {2, 650, 300}}).Mark().Move({{1, 300, 300}, {2, 700, 300}});
}

TEST(SceneBounds, EndWithTheAnswerAtTheNextTick) {
    struct Row {
        const char* name;
        BoundsAnswer answer;
        bool waitsBefore, waitsAfter;
        bool received;
        double distance;
    };
    const Row rows[] = {{"answered", BoundsAnswer::NextTick, true, false, true, 22},
                        {"failed", BoundsAnswer::Failed, true, false, false, 0},
                        {"never", BoundsAnswer::Never, true, true, false, 0},
                        {"refused", BoundsAnswer::Refused, false, false, false, 0}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        FingerScript s = FingerScript::OnShapeView(OrthographicView(), Answering(row.answer));
        const int references = s.Component().GetReferenceCount();
        const bool refused = row.answer == BoundsAnswer::Refused;
        if (refused) {
            s.AnnounceTrace(RefusedTrace);
        }
        Pinch(s);
        s.ExpectActions(refused ? Texts{"ManageObject refused", std::string("Trace ") + RefusedTrace + "\n",
                                        "SetCameraLocation", "SetOrthographicWidth"}
                                : Texts{"ManageObject accepted", "GetBoundingBox all visible", "SetCameraLocation",
                                        "SetOrthographicWidth"});
        EXPECT_EQ(s.Inspect().GetBoundsEvent() != nullptr, row.waitsBefore);
        EXPECT_EQ(s.Component().GetReferenceCount() > references, row.waitsBefore) << "it keeps the workflow alive";
        s.Tick().ExpectNoActions();
        EXPECT_EQ(s.Inspect().GetBoundsEvent() != nullptr, row.waitsAfter);
        EXPECT_EQ(s.Component().GetReferenceCount() > references, row.waitsAfter);
        EXPECT_EQ(s.Inspect().GetModelBounds(), row.received ? OrthographicView().bounds : dg::DBox::EMPTY);
        EXPECT_DOUBLE_EQ(s.Inspect().GetWorldDistance(), row.distance);
    }
}

TEST(SceneBounds, AFailureEmptiesTheBoxAndKeepsTheDistance) {
    for (const BoundsAnswer answer : {BoundsAnswer::Failed, BoundsAnswer::Refused}) {
        FingerScript s = FingerScript::OnShapeView(OrthographicView(), Answering(answer));
        if (answer == BoundsAnswer::Refused) {
            s.AnnounceTrace(RefusedTrace);
        }
        s.Down(3, 500, 500);
        s.Component().ReceiveBounds({{-1, -1, -1}, {1, 1, 1}});
        s.Up(3).Wait(600);
        Pinch(s).Tick();
        EXPECT_TRUE(s.Inspect().GetModelBounds().IsEmpty());
        EXPECT_DOUBLE_EQ(s.Inspect().GetWorldDistance(), 21);
    }
}

TEST(SceneBounds, ANewRequestCancelsTheOneThatWaits) {
    FingerScript s = FingerScript::OnShapeView(ExploreView());
    s.Down({{1, 350, 300}, {2, 650, 300}});
    const touch::TouchGetBoundsEvent* first = s.Inspect().GetBoundsEvent();
    ASSERT_NE(first, nullptr);
    const int references = s.Component().GetReferenceCount();
    s.Mark().Move({{1, 300, 300}, {2, 700, 300}});
    s.ExpectActions({"Cancel", "ManageObject accepted", "GetBoundingBox all visible", "SetCameraLocation"});
    EXPECT_NE(s.Inspect().GetBoundsEvent(), nullptr);
    EXPECT_EQ(s.Component().GetReferenceCount(), references) << "the first one has let go";
    s.Tick().Tick();
    EXPECT_EQ(s.Inspect().GetBoundsEvent(), nullptr);
    EXPECT_EQ(s.Inspect().GetModelBounds(), ExploreView().bounds);
}

// A workflow and its request must not go on holding each other when the request has ended for a copy.
TEST(SceneBounds, ARequestThatEndedIsNotTakenBackFromACopy) {
    FingerScript s = FingerScript::OnShapeView();
    Pinch(s);
    const touch::TouchWorkflow copy(s.Component());
    ASSERT_NE(touch::WorkflowInspector(copy).GetBoundsEvent(), nullptr);
    s.Tick();
    ASSERT_EQ(s.Inspect().GetBoundsEvent(), nullptr);
    s.Component() = copy;
    EXPECT_EQ(s.Inspect().GetBoundsEvent(), nullptr);
    EXPECT_EQ(touch::WorkflowInspector(touch::TouchWorkflow(copy)).GetBoundsEvent(), nullptr);
}

TEST(SceneBounds, ACopyThatAsksAnewEndsTheWaitingOfBoth) {
    FingerScript s = FingerScript::OnShapeView(ExploreView(), Answering(BoundsAnswer::Never));
    s.Down({{1, 350, 300}, {2, 650, 300}});
    const du::SmartPtr<touch::TouchWorkflow> copy(new touch::TouchWorkflow(s.Component()));
    const touch::TouchGetBoundsEvent* shared = s.Inspect().GetBoundsEvent();
    ASSERT_NE(shared, nullptr);
    workflow::TouchMsg::Integers pinched{};
    pinched.fill(-1);
    const int records[] = {2, 1, 300, 300, s.TouchTime() + 10, 1, 2, 700, 300, s.TouchTime() + 10, 1};
    std::copy(std::begin(records), std::end(records), pinched.begin() + 1);
    copy->HandleMsg(workflow::TouchMsg(workflow::ConstStrings::MsgTouch, pinched));
    EXPECT_NE(touch::WorkflowInspector(*copy).GetBoundsEvent(), nullptr);
    EXPECT_NE(touch::WorkflowInspector(*copy).GetBoundsEvent(), shared);
    EXPECT_EQ(s.Inspect().GetBoundsEvent(), nullptr);
    EXPECT_EQ(s.Component().GetReferenceCount(), 1) << "the host's";
}

TEST(SceneBounds, TheAnswerIsTheBoxOfTheAskedViewAtThatMomentEvenAfterTheTouch) {
    FingerScript s = FingerScript::OnShapeView();
    Pinch(s).Up({1, 2});
    viewer::ViewChange change;
    change.bounds = dg::DBox({0, 0, 0}, {9, 9, 9});
    s.Change(change).SetView(PageView("imageview")).Tick();
    EXPECT_EQ(s.Inspect().GetModelBounds(), *change.bounds);
    EXPECT_EQ(s.Inspect().GetBoundsEvent(), nullptr);
}

TEST(SceneBounds, AWorkflowThatTheHostDropsLivesUntilItsRequestEnds) {
    FingerScript s = FingerScript::OnShapeView(OrthographicView(), Answering(BoundsAnswer::Never));
    Pinch(s);
    const du::SmartPtr<workflow::SimpleWorkflow> watched(s.Viewer().GetComponent());
    // Unloading ends the request as failed; only the test still holds the workflow.
    s.Viewer().UnloadComponent();
    EXPECT_EQ(watched->GetReferenceCount(), 1);
}

}  // namespace
}  // namespace tests
