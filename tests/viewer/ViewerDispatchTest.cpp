#include "tests/viewer/ViewerFixtures.h"

#include <gmock/gmock.h>

#include <map>

namespace viewer {
namespace {

using testing::ElementsAre;
using workflow::ConstStrings;
using workflow::MouseMsg;
using Names = std::vector<std::string>;

class Delivery : public testing::Test {
protected:
    StandInWorkflow* Add(const char* name, unsigned int priority) {
        auto* workflow = new StandInWorkflow(name, priority, heard);
        services.dispatch.Add(du::SmartPtr<workflow::SimpleWorkflow>(workflow));
        return workflow;
    }
    std::optional<bool> Move() { return services.dispatch.Deliver(MouseMsg(ConstStrings::MsgMouseMove, 3, 4, 0)); }

    Names heard;  // outlives the workflows
    Services services;
};

TEST_F(Delivery, OffersAMessageByDescendingPriorityUntilItIsConsumed) {
    struct Row {
        const char* name;
        const char* consumer;
        Names heard;
        std::optional<bool> componentAnswer;
    };
    const Row rows[] = {
        {"nobody consumes", "", {"first", "component", "equal", "last"}, false},
        {"the component consumes", "component", {"first", "component"}, true},
        {"a higher one consumes", "first", {"first"}, std::nullopt},
        {"a lower one consumes", "equal", {"first", "component", "equal"}, false},
    };
    std::map<std::string, StandInWorkflow*> byName;
    byName["last"] = Add("last", 5);
    byName["component"] = Add("component", 100);
    byName["equal"] = Add("equal", 100);
    byName["first"] = Add("first", 4000000000U);
    services.dispatch.SetComponent(byName["component"]);
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        heard.clear();
        for (const auto& [name, workflow] : byName) {
            workflow->consumes = name == row.consumer;
        }
        EXPECT_EQ(Move(), row.componentAnswer);
        EXPECT_EQ(heard, row.heard);
    }
    EXPECT_TRUE(services.recorder.GetCalls().empty()) << "the host's own messages are no calls of the component";
}

TEST_F(Delivery, AsksOnlyWorkflowsThatAreRegisteredAndActive) {
    StandInWorkflow* component = Add("component", 1);
    services.dispatch.SetComponent(component);
    EXPECT_EQ(services.dispatch.Deliver(MouseMsg(ConstStrings::MsgMouseRightUp, 0, 0, 0)), std::nullopt);
    component->SetActive(false);
    EXPECT_EQ(Move(), std::nullopt);
    component->SetActive(true);
    EXPECT_EQ(Move(), false);
    EXPECT_THAT(heard, ElementsAre("component"));
}

TEST_F(Delivery, SurvivesRemovalDuringDelivery) {
    struct Row {
        const char* name;
        Names removed;
        Names heard;
    };
    const Row rows[] = {
        {"one that was asked", {"a"}, {"a", "b", "a gone", "c"}},
        {"one to be asked", {"c"}, {"a", "b", "c gone"}},
        {"all", {"a", "c", "b"}, {"a", "b", "a gone", "c gone", "b gone"}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        Names order;
        Services local;
        std::map<std::string, StandInWorkflow*> byName;
        unsigned int priority = 3;
        for (const char* name : {"a", "b", "c"}) {
            byName[name] = new StandInWorkflow(name, priority--, order);
            local.dispatch.Add(du::SmartPtr<workflow::SimpleWorkflow>(byName[name]));
        }
        byName["b"]->action = [&] {
            for (const std::string& name : row.removed) {
                local.dispatch.Remove(*byName[name]);
            }
        };
        local.dispatch.Deliver(MouseMsg(ConstStrings::MsgMouseMove, 0, 0, 0));
        EXPECT_EQ(order, row.heard);
    }
}

TEST_F(Delivery, RemovalInsideANestedSendKeepsTheOuterDeliveryInStep) {
    StandInWorkflow* first = Add("first", 3);
    StandInWorkflow* second = Add("second", 2);
    Add("third", 1);
    bool nested = false;
    second->action = [&] {
        if (!std::exchange(nested, true)) {
            second->SendMessage(MouseMsg(ConstStrings::MsgMouseMove, 0, 0, 0));
        } else {
            services.dispatch.Remove(*first);
        }
    };
    Move();
    EXPECT_THAT(heard, ElementsAre("first", "second", "first", "second", "first gone", "third", "third"));
}

TEST_F(Delivery, AWorkflowAddedDuringDeliveryHearsItOnlyBehindTheOneBeingAsked) {
    Add("high", 20)->action = [&, calls = 0]() mutable {
        if (++calls == 1) {
            Move();  // the outer delivery keeps its place too
        } else if (calls == 2) {
            Add("higher", 30);
            Add("lower", 10);
        }
    };
    Move();
    EXPECT_THAT(heard, ElementsAre("high", "high", "lower", "lower"));
    heard.clear();
    Move();
    EXPECT_THAT(heard, ElementsAre("higher", "high", "lower"));
}

TEST_F(Delivery, RecordsASentMessageBeforeWhatItCausesAndTheAnswerAfterwards) {
    StandInWorkflow* component = Add("component", 10);
    Add("picker", 1);
    services.dispatch.SetComponent(component);
    component->consumesClicks = true;
    component->action = [&] {
        if (heard.size() == 1) {
            component->SendMessage(MouseMsg(ConstStrings::MsgClickLeft, 7, 8, 0));
            component->SendMessage(MouseMsg(ConstStrings::MsgMouseRightUp, 9, 9, 0));
        } else {
            component->UpdateStatusMessage();
        }
    };
    Move();
    EXPECT_THAT(services.GetCallNames(),
                ElementsAre("SendMessage MsgClickLeft", "UpdateStatusMessage", "SendMessage MsgMouseRightUp"));
    EXPECT_EQ(std::get<SendMessageCall>(services.recorder.GetCalls()[0]).componentAnswer, true);
    EXPECT_EQ(std::get<SendMessageCall>(services.recorder.GetCalls()[2]).componentAnswer, std::nullopt);
    EXPECT_THAT(heard, ElementsAre("component", "component", "picker"));
}

TEST_F(Delivery, DeliversButRecordsNothingWhileTheRecorderIsOff) {
    StandInWorkflow* component = Add("component", 10);
    services.recorder.SetEnabled(false);
    component->SendMessage(MouseMsg(ConstStrings::MsgMouseMove, 1, 1, 0));
    component->SetStatusMessage(1, "text");
    component->GetManagerCore()->StopTransition();
    EXPECT_THAT(heard, ElementsAre("component"));
    EXPECT_TRUE(services.recorder.GetCalls().empty());
}

TEST_F(Delivery, TheStatusBarShowsItsSlotsAsOfTheLatestRepaint) {
    MessageDispatch& dispatch = services.dispatch;
    for (const auto& [slot, exists] : {std::pair{-1, false}, {0, true}, {3, true}, {4, false}}) {
        EXPECT_EQ(dispatch.SetStatusMessage(slot, "slot " + std::to_string(slot)), exists) << slot;
    }
    EXPECT_EQ(dispatch.GetStatusBar().GetShownText(), "");
    dispatch.UpdateStatusMessage();
    dispatch.SetStatusMessage(0, "not painted");
    EXPECT_EQ(dispatch.GetStatusBar().GetShownText(), "slot 0  slot 3");
}

TEST_F(Delivery, AWorkflowThatIsTakenOutLosesItsManager) {
    const du::SmartPtr<workflow::SimpleWorkflow> kept(new StandInWorkflow("kept", 1, heard));
    services.dispatch.Add(kept);
    services.dispatch.Remove(*kept);
    EXPECT_EQ(kept->GetManagerCore(), nullptr);
}

}  // namespace
}  // namespace viewer
