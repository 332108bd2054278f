// The request for the model's box, and every way in which it can end.
#include "host/workflow/ConstStrings.h"
#include "tests/support/FingerScript.h"
#include "touch/navigation/TouchGetBoundsEvent.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>

namespace tests {
namespace {

using viewer::BoundsAnswer;

viewer::HostSettings Answering(BoundsAnswer answer) {
    viewer::HostSettings settings;
    settings.boundsAnswer = answer;
    return settings;
}

FingerScript& Pinch(FingerScript& s) {
    return s.Down({{1, 350, 300}, {2, 650, 300}}).Mark().Move({{1, 300, 300}, {2, 700, 300}});
}

// Before, the host has shown the component another box, at a distance of 21.
TEST(SceneBounds, EndWithTheAnswerAtTheNextTick) {
    const dg::DBox other({-1, -1, -1}, {1, 1, 1});
    const struct {
        const char* name;
        BoundsAnswer answer;
        bool waitsBefore, waitsAfter;
        dg::DBox box;
        double distance;
    } rows[] = {{"answered", BoundsAnswer::NextTick, true, false, OrthographicView().bounds, 22},
                {"failed", BoundsAnswer::Failed, true, false, dg::DBox::EMPTY, 21},
                {"never", BoundsAnswer::Never, true, true, other, 21},
                {"refused", BoundsAnswer::Refused, false, false, dg::DBox::EMPTY, 21}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        FingerScript s = FingerScript::OnShapeView(OrthographicView(), Answering(row.answer));
        const int references = s.Component().GetReferenceCount();
        s.Down(3, 500, 500);
        s.Component().ReceiveBounds(other);
        s.Up(3).Wait(600);
        if (row.answer == BoundsAnswer::Refused) {
            s.AnnounceTrace("RequestBounds(): GetBoundingBox() failed.");
        }
        Pinch(s);
        EXPECT_EQ(s.Inspect().GetBoundsEvent() != nullptr, row.waitsBefore);
        EXPECT_EQ(s.Component().GetReferenceCount() > references, row.waitsBefore) << "it keeps the workflow alive";
        s.Mark().Tick().ExpectNoActions();
        EXPECT_EQ(s.Inspect().GetBoundsEvent() != nullptr, row.waitsAfter);
        EXPECT_EQ(s.Component().GetReferenceCount() > references, row.waitsAfter);
        EXPECT_EQ(s.Inspect().GetModelBounds(), row.box);
        EXPECT_DOUBLE_EQ(s.Inspect().GetWorldDistance(), row.distance);
    }
}

TEST(SceneBounds, ANewRequestCancelsTheOneThatWaits) {
    FingerScript s = FingerScript::OnShapeView(ExploreView());
    s.Down({{1, 350, 300}, {2, 650, 300}});
    const touch::TouchGetBoundsEvent* first = s.Inspect().GetBoundsEvent();
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(first->GetClassName(), "touch::TouchGetBoundsEvent");
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
    const workflow::TouchFrame pinched{2,
                                       {{{1, 300, 300, s.TouchTime() + 10, workflow::TouchMove},
                                         {2, 700, 300, s.TouchTime() + 10, workflow::TouchMove}}}};
    copy->HandleMsg(workflow::TouchMsg(workflow::ConstStrings::MsgTouch, pinched));
    EXPECT_NE(touch::WorkflowInspector(*copy).GetBoundsEvent(), nullptr);
    EXPECT_NE(touch::WorkflowInspector(*copy).GetBoundsEvent(), shared);
    EXPECT_EQ(s.Inspect().GetBoundsEvent(), nullptr);
    EXPECT_EQ(s.Component().GetReferenceCount(), 1) << "the host's";
}

}  // namespace
}  // namespace tests
