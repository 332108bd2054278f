// The workflow base: which message reaches which handler with which arguments.
#include "host/workflow/ConstStrings.h"
#include "host/workflow/SimpleWorkflow.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <numeric>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace {

using du::Symbol;
using testing::ElementsAre;
using testing::IsEmpty;
using workflow::ConstStrings;
using workflow::ModeMsg;
using workflow::MouseMsg;
using workflow::Msg;
using workflow::TimerMsg;
using workflow::TouchMsg;

using Log = std::vector<std::string>;

// Writes down every handler that a message can reach, with its arguments.
class Recorder : public workflow::SimpleWorkflow {
public:
    Recorder() : SimpleWorkflow(Symbol("recorder")) {}

    bool OnMsgMouseMove(int x, int y) override { return Write("MsgMouseMove", x, y); }
    bool OnMsgMouseLeftDown(int x, int y) override { return Write("MsgMouseLeftDown", x, y); }
    bool OnMsgMouseLeftUp(int x, int y) override { return Write("MsgMouseLeftUp", x, y); }
    bool OnMsgMouseInitLeftDrag(int x, int y) override { return Write("MsgMouseInitLeftDrag", x, y); }
    bool OnMsgMouseLeftDrag(int x, int y) override { return Write("MsgMouseLeftDrag", x, y); }
    bool OnMsgMouseRightDown(int x, int y) override { return Write("MsgMouseRightDown", x, y); }
    bool OnMsgMouseRightUp(int x, int y) override { return Write("MsgMouseRightUp", x, y); }
    bool OnMsgMouseInitRightDrag(int x, int y) override { return Write("MsgMouseInitRightDrag", x, y); }
    bool OnMsgMouseRightDrag(int x, int y) override { return Write("MsgMouseRightDrag", x, y); }
    bool OnMsgMouseInitMiddleDrag(int x, int y) override { return Write("MsgMouseInitMiddleDrag", x, y); }
    bool OnMsgMouseMiddleDrag(int x, int y) override { return Write("MsgMouseMiddleDrag", x, y); }
    bool OnMsgClickLeft(int x, int y) override { return Write("MsgClickLeft", x, y); }
    bool OnMsgDoubleClickLeft(int x, int y) override { return Write("MsgDoubleClickLeft", x, y); }
    bool OnMsgTimer(long long now, long long interval) override { return Write("MsgTimer", now, interval); }
    bool OnMsgUpdateStatusBar() override { return Write("MsgUpdateStatusBar"); }
    bool OnMsgMode(const Symbol& workflowName, const Symbol& mode, const du::SmartPtr<du::RefCounted>& data,
                   int value) override {
        return Write("MsgSetMode", workflowName.GetString(), mode.GetString(), data ? "data" : "none", value);
    }
    // clang-format off
    bool OnMsgTouch(int a, int b, int c0, int c1, int c2, int c3, int c4, int d0, int d1, int d2, int d3, int d4,
                    int e0, int e1, int e2, int e3, int e4, int f0, int f1, int f2, int f3, int f4, int g0, int g1,
                    int g2, int g3, int g4, int h0, int h1, int h2, int h3, int h4, int i0, int i1, int i2, int i3,
                    int i4, int j0, int j1, int j2, int j3, int j4, int k0, int k1, int k2, int k3, int k4, int l0,
                    int l1, int l2, int l3, int l4) override {
        return Write("MsgTouch", a, b, c0, c1, c2, c3, c4, d0, d1, d2, d3, d4, e0, e1, e2, e3, e4, f0, f1, f2, f3, f4,
                     g0, g1, g2, g3, g4, h0, h1, h2, h3, h4, i0, i1, i2, i3, i4, j0, j1, j2, j3, j4, k0, k1, k2, k3,
                     k4, l0, l1, l2, l3, l4);
    }
    // clang-format on

    Log log;
    bool answer = false;

private:
    template <class... Argument>
    bool Write(const char* handler, const Argument&... arguments) {
        std::ostringstream line;
        line << handler;
        ((line << ' ' << arguments), ...);
        log.push_back(line.str());
        return answer;
    }
};

struct MessageRow {
    std::shared_ptr<Msg> message;
    std::string handled;  // the name of the message type, and the handler's arguments
};

std::vector<MessageRow> MakeMessages() {
    using CS = ConstStrings;
    TouchMsg::Integers integers{};
    std::iota(integers.begin(), integers.end(), 100);
    std::string touched = "MsgTouch";
    for (const int value : integers) {
        touched += ' ' + std::to_string(value);
    }
    std::vector<MessageRow> rows = {
        {std::make_shared<TimerMsg>(CS::MsgTimer, 1LL << 40, -16), "MsgTimer 1099511627776 -16"},
        {std::make_shared<Msg>(CS::MsgUpdateStatusBar), "MsgUpdateStatusBar"},
        {std::make_shared<ModeMsg>(CS::MsgSetMode, Symbol("touch"), Symbol("enter"), nullptr, 4),
         "MsgSetMode touch enter none 4"},
        {std::make_shared<TouchMsg>(CS::MsgTouch, integers), touched},
    };
    for (const Symbol& type :
         {CS::MsgMouseMove, CS::MsgMouseLeftDown, CS::MsgMouseLeftUp, CS::MsgMouseInitLeftDrag, CS::MsgMouseLeftDrag,
          CS::MsgMouseRightDown, CS::MsgMouseRightUp, CS::MsgMouseInitRightDrag, CS::MsgMouseRightDrag,
          CS::MsgMouseInitMiddleDrag, CS::MsgMouseMiddleDrag, CS::MsgClickLeft, CS::MsgDoubleClickLeft}) {
        rows.push_back({std::make_shared<MouseMsg>(type, -7, 9, short{0}), type.GetString() + " -7 9"});
    }
    return rows;
}

TEST(SimpleWorkflows, EachMessageReachesTheHandlerOfItsNameWithItsArguments) {
    for (const MessageRow& row : MakeMessages()) {
        EXPECT_EQ(row.message->GetType().GetString(), row.handled.substr(0, row.handled.find(' ')));
        Recorder recorder;
        recorder.AddMsgTypeHandled(row.message->GetType(), true);
        EXPECT_FALSE(recorder.HandleMsg(*row.message)) << row.handled;
        recorder.answer = true;
        EXPECT_TRUE(recorder.HandleMsg(*row.message)) << "the handler's own answer: " << row.handled;
        EXPECT_THAT(recorder.log, ElementsAre(row.handled, row.handled));
    }
}

TEST(SimpleWorkflows, AMessageWithoutTheHandlersArgumentsReachesNobody) {
    Recorder recorder;
    recorder.answer = true;
    for (const MessageRow& row : MakeMessages()) {
        const Symbol type = row.message->GetType();
        recorder.AddMsgTypeHandled(type, true);
        const std::shared_ptr<Msg> ofEveryContent[] = {
            std::make_shared<Msg>(type), std::make_shared<MouseMsg>(type, 1, 2, short{0}),
            std::make_shared<TouchMsg>(type, TouchMsg::Integers{}), std::make_shared<TimerMsg>(type, 1, 2),
            std::make_shared<ModeMsg>(type, type, type, nullptr, 1)};
        for (const auto& message : ofEveryContent) {
            if (message->GetContent() != row.message->GetContent()) {
                EXPECT_FALSE(recorder.HandleMsg(*message)) << row.handled;
            }
        }
    }
    EXPECT_THAT(recorder.log, IsEmpty());
}

TEST(SimpleWorkflows, RegistrationDecidesWhatComes) {
    const MouseMsg move(ConstStrings::MsgMouseMove, 1, 2, 0);
    const MouseMsg click(ConstStrings::MsgClickLeft, 3, 4, 0);
    Recorder recorder;
    const auto received = [&](const Msg& message) {
        recorder.log.clear();
        recorder.HandleMsg(message);
        return !recorder.log.empty();
    };
    EXPECT_FALSE(received(move)) << "not registered";
    recorder.AddMsgTypeHandled(ConstStrings::MsgMouseMove, true);
    recorder.AddMsgTypeHandled(ConstStrings::MsgClickLeft, false);
    EXPECT_TRUE(received(move));
    recorder.SetActive(false);
    EXPECT_FALSE(received(move)) << "only while active";
    EXPECT_TRUE(received(click)) << "always";
    recorder.AddMsgTypeHandled(ConstStrings::MsgMouseMove, false);
    EXPECT_TRUE(received(move)) << "registering again replaces the flag";
    recorder.RemoveMsgTypeHandled(ConstStrings::MsgMouseMove);
    EXPECT_FALSE(received(move)) << "and leaves one registration to remove";
    EXPECT_TRUE(received(click));
    recorder.RemoveAllMsgTypesHandled();
    EXPECT_FALSE(received(click));
}

TEST(Workflows, WithoutAManagerNothingIsAsked) {
    Recorder workflow;
    workflow.SendMessage(Msg(ConstStrings::MsgUpdateStatusBar));
    workflow.SendModeMessage(Symbol("picker"), Symbol("enable"), 1, nullptr);
    EXPECT_FALSE(workflow.SetStatusMessage(1, "text"));
    workflow.UpdateStatusMessage();
    EXPECT_FALSE(workflow.ManageObject(du::SmartPtr<dom::ManagedObject>(new hxk::BoundingBoxEvent)));
}

TEST(Workflows, ACopyHasRegistrationsOfItsOwnAndNoReferences) {
    Recorder original;
    original.SetPriority(1000);
    original.AddMsgTypeHandled(ConstStrings::MsgMouseMove, true);
    const du::SmartPtr<Recorder> copy(new Recorder(original));
    EXPECT_EQ(copy->GetReferenceCount(), 1);
    EXPECT_EQ(copy->GetName(), "recorder");
    EXPECT_EQ(copy->GetPriority(), 1000U);
    original.RemoveAllMsgTypesHandled();
    EXPECT_TRUE(copy->IsMsgTypeHandled(ConstStrings::MsgMouseMove));
}

}  // namespace
