// The workflow base: which message reaches which handler with which arguments, and what goes to the manager.
#include "host/workflow/ConstStrings.h"
#include "host/workflow/SimpleWorkflow.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <numeric>
#include <sstream>
#include <string>
#include <vector>

namespace {

using du::Symbol;
using testing::ElementsAre;
using testing::IsEmpty;
using workflow::ConstStrings;
using workflow::MouseMsg;
using workflow::Msg;
using workflow::TouchMsg;

using Log = std::vector<std::string>;

// Writes down every handler that a message can reach, with its arguments.
class Recorder : public workflow::SimpleWorkflow {
public:
    explicit Recorder(const char* name = "recorder") : SimpleWorkflow(Symbol(name)) {}
    Recorder(const Recorder&) = default;
    Recorder& operator=(const Recorder&) = default;

    bool OnMsgMouseMove(int x, int y) override { return Write("Move", x, y); }
    bool OnMsgMouseLeftDown(int x, int y) override { return Write("LeftDown", x, y); }
    bool OnMsgMouseLeftUp(int x, int y) override { return Write("LeftUp", x, y); }
    bool OnMsgMouseInitLeftDrag(int x, int y) override { return Write("InitLeftDrag", x, y); }
    bool OnMsgMouseLeftDrag(int x, int y) override { return Write("LeftDrag", x, y); }
    bool OnMsgMouseRightDown(int x, int y) override { return Write("RightDown", x, y); }
    bool OnMsgMouseRightUp(int x, int y) override { return Write("RightUp", x, y); }
    bool OnMsgMouseInitRightDrag(int x, int y) override { return Write("InitRightDrag", x, y); }
    bool OnMsgMouseRightDrag(int x, int y) override { return Write("RightDrag", x, y); }
    bool OnMsgMouseInitMiddleDrag(int x, int y) override { return Write("InitMiddleDrag", x, y); }
    bool OnMsgMouseMiddleDrag(int x, int y) override { return Write("MiddleDrag", x, y); }
    bool OnMsgClickLeft(int x, int y) override { return Write("Click", x, y); }
    bool OnMsgDoubleClickLeft(int x, int y) override { return Write("DoubleClick", x, y); }
    bool OnMsgTimer(long long now, long long interval) override { return Write("Timer", now, interval); }
    bool OnMsgUpdateStatusBar() override { return Write("StatusBar"); }
    bool OnMsgMode(const Symbol& workflowName, const Symbol& mode, const du::SmartPtr<du::RefCounted>& data,
                   int value) override {
        return Write("Mode", workflowName.GetString(), mode.GetString(), data ? "data" : "none", value);
    }
    // clang-format off
    bool OnMsgTouch(int a, int b, int c0, int c1, int c2, int c3, int c4, int d0, int d1, int d2, int d3, int d4,
                    int e0, int e1, int e2, int e3, int e4, int f0, int f1, int f2, int f3, int f4, int g0, int g1,
                    int g2, int g3, int g4, int h0, int h1, int h2, int h3, int h4, int i0, int i1, int i2, int i3,
                    int i4, int j0, int j1, int j2, int j3, int j4, int k0, int k1, int k2, int k3, int k4, int l0,
                    int l1, int l2, int l3, int l4) override {
        return Write("Touch", a, b, c0, c1, c2, c3, c4, d0, d1, d2, d3, d4, e0, e1, e2, e3, e4, f0, f1, f2, f3, f4,
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
    std::string handled;
};

std::vector<MessageRow> MakeMessages() {
    const auto mouse = [](const Symbol& type) { return std::make_shared<MouseMsg>(type, -7, 9, short{0}); };
    TouchMsg::Integers integers{};
    std::iota(integers.begin(), integers.end(), 100);
    std::string touched = "Touch";
    for (const int value : integers) {
        touched += ' ' + std::to_string(value);
    }
    return {
        {mouse(ConstStrings::MsgMouseMove), "Move -7 9"},
        {mouse(ConstStrings::MsgMouseLeftDown), "LeftDown -7 9"},
        {mouse(ConstStrings::MsgMouseLeftUp), "LeftUp -7 9"},
        {mouse(ConstStrings::MsgMouseInitLeftDrag), "InitLeftDrag -7 9"},
        {mouse(ConstStrings::MsgMouseLeftDrag), "LeftDrag -7 9"},
        {mouse(ConstStrings::MsgMouseRightDown), "RightDown -7 9"},
        {mouse(ConstStrings::MsgMouseRightUp), "RightUp -7 9"},
        {mouse(ConstStrings::MsgMouseInitRightDrag), "InitRightDrag -7 9"},
        {mouse(ConstStrings::MsgMouseRightDrag), "RightDrag -7 9"},
        {mouse(ConstStrings::MsgMouseInitMiddleDrag), "InitMiddleDrag -7 9"},
        {mouse(ConstStrings::MsgMouseMiddleDrag), "MiddleDrag -7 9"},
        {mouse(ConstStrings::MsgClickLeft), "Click -7 9"},
        {mouse(ConstStrings::MsgDoubleClickLeft), "DoubleClick -7 9"},
        {std::make_shared<workflow::TimerMsg>(ConstStrings::MsgTimer, 1LL << 40, -16), "Timer 1099511627776 -16"},
        {std::make_shared<Msg>(ConstStrings::MsgUpdateStatusBar), "StatusBar"},
        {std::make_shared<workflow::ModeMsg>(ConstStrings::MsgSetMode, Symbol("touch"), Symbol("enter"), nullptr, 4),
         "Mode touch enter none 4"},
        {std::make_shared<TouchMsg>(ConstStrings::MsgTouch, integers), touched},
    };
}

// The same message under another type.
std::shared_ptr<Msg> Retyped(const Msg& message, const Symbol& type) {
    switch (message.GetContent()) {
    case Msg::Content::None: return std::make_shared<Msg>(type);
    case Msg::Content::Mouse: return std::make_shared<MouseMsg>(type, 1, 2, short{0});
    case Msg::Content::Touch: return std::make_shared<TouchMsg>(type, TouchMsg::Integers{});
    case Msg::Content::Timer: return std::make_shared<workflow::TimerMsg>(type, 1, 2);
    case Msg::Content::Mode: return std::make_shared<workflow::ModeMsg>(type, type, type, nullptr, 1);
    }
    return nullptr;
}

TEST(SimpleWorkflows, EachMessageReachesTheHandlerOfItsNameWithItsArguments) {
    for (const MessageRow& row : MakeMessages()) {
        Recorder recorder;
        recorder.AddMsgTypeHandled(row.message->GetType(), true);
        EXPECT_FALSE(recorder.HandleMsg(*row.message)) << row.handled;
        recorder.answer = true;
        EXPECT_TRUE(recorder.HandleMsg(*row.message)) << "the handler's own answer: " << row.handled;
        EXPECT_THAT(recorder.log, ElementsAre(row.handled, row.handled));
    }
}

TEST(SimpleWorkflows, AMessageWithoutTheHandlersArgumentsReachesNobody) {
    const std::vector<MessageRow> messages = MakeMessages();
    Recorder recorder;
    recorder.answer = true;
    for (const MessageRow& row : messages) {
        recorder.AddMsgTypeHandled(row.message->GetType(), true);
    }
    for (const MessageRow& type : messages) {
        for (const MessageRow& content : messages) {
            if (type.message->GetContent() != content.message->GetContent()) {
                EXPECT_FALSE(recorder.HandleMsg(*Retyped(*content.message, type.message->GetType())))
                    << content.handled << " sent as " << type.message->GetType().GetString();
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

// A manager that writes down what it is asked and agrees.
class Manager : public workflow::WorkflowManagerCore {
public:
    void SendMessage(const Msg& message) override { log.push_back("send " + message.GetType().GetString()); }
    void SendModeMessage(const Symbol& workflowName, const Symbol& mode, int value,
                         const du::SmartPtr<du::RefCounted>& data) override {
        log.push_back("mode " + workflowName.GetString() + " " + mode.GetString() + " " + std::to_string(value) +
                      (data ? " data" : ""));
    }
    bool SetStatusMessage(int slot, const std::string& text) override {
        log.push_back("status " + std::to_string(slot) + " " + text);
        return true;
    }
    void UpdateStatusMessage() override { log.emplace_back("update"); }
    bool ManageObject(const du::SmartPtr<dom::ManagedObject>& object) override {
        log.push_back(object ? "manage" : "manage nothing");
        return true;
    }
    void StopTransition() override {}
    std::int64_t GetTransitionContext(int /*kind*/) override { return 0; }
    void GetTransitionQueue(du::SmartPtr<workflow::TransitionQueue>& /*queue*/) override {}

    Log log;
};

struct Answers {
    bool status;
    bool manage;
};

Answers AskEverything(workflow::Workflow& workflow) {
    workflow.SendMessage(Msg(ConstStrings::MsgUpdateStatusBar));
    workflow.SendModeMessage(Symbol("picker"), Symbol("enable"), 1, nullptr);
    const bool status = workflow.SetStatusMessage(1, "text");
    workflow.UpdateStatusMessage();
    return {status, workflow.ManageObject(du::SmartPtr<dom::ManagedObject>(new hxk::BoundingBoxEvent))};
}

TEST(Workflows, WithoutAManagerNothingIsAsked) {
    Recorder workflow;
    const Answers answers = AskEverything(workflow);
    EXPECT_FALSE(answers.status);
    EXPECT_FALSE(answers.manage);
}

TEST(Workflows, TheManagerGetsWhatTheWorkflowAsks) {
    Manager manager;
    Recorder workflow;
    workflow.SetManager(&manager);
    const Answers answers = AskEverything(workflow);
    EXPECT_TRUE(answers.status);
    EXPECT_TRUE(answers.manage);
    EXPECT_THAT(manager.log,
                ElementsAre("send MsgUpdateStatusBar", "mode picker enable 1", "status 1 text", "update", "manage"));
    workflow.SetManager(nullptr);
    AskEverything(workflow);
    EXPECT_EQ(manager.log.size(), 5U);
}

TEST(Workflows, StartActiveWithoutRankAndGoWhenAnotherCompletes) {
    const Recorder workflow("name");
    EXPECT_EQ(workflow.GetName(), "name");
    EXPECT_TRUE(workflow.IsActive());
    EXPECT_EQ(workflow.GetPriority(), 0U);
    EXPECT_FALSE(workflow.GetPersistent());
    EXPECT_FALSE(workflow.GetPreselectGuard());
    EXPECT_EQ(workflow.GetView(), nullptr);
    EXPECT_EQ(workflow.GetManagerCore(), nullptr);
}

TEST(Workflows, ACopyHasRegistrationsOfItsOwnAndNoReferences) {
    Manager manager;
    Recorder original("name");
    original.SetManager(&manager);
    original.SetPriority(1000);
    original.SetPreselectGuard(true);
    original.AddMsgTypeHandled(ConstStrings::MsgMouseMove, true);
    const du::SmartPtr<Recorder> copy(new Recorder(original));
    EXPECT_EQ(copy->GetReferenceCount(), 1);
    EXPECT_EQ(copy->GetName(), "name");
    EXPECT_EQ(copy->GetPriority(), 1000U);
    EXPECT_TRUE(copy->GetPreselectGuard());
    EXPECT_EQ(copy->GetManagerCore(), &manager);
    original.RemoveAllMsgTypesHandled();
    EXPECT_TRUE(copy->IsMsgTypeHandled(ConstStrings::MsgMouseMove));
    *copy = original;
    EXPECT_FALSE(copy->IsMsgTypeHandled(ConstStrings::MsgMouseMove));
    EXPECT_EQ(copy->GetReferenceCount(), 1);
}

}  // namespace
