// Dispatch of messages to handlers. The default handlers are in SimpleWorkflowHandlers.cpp.
#include "host/workflow/SimpleWorkflow.h"

#include "host/workflow/ConstStrings.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace workflow {
namespace {

using MouseHandler = bool (SimpleWorkflow::*)(int, int);

struct MouseRoute {
    const du::Symbol* type;
    MouseHandler handler;
};

constexpr MouseRoute MouseRoutes[] = {
    {&ConstStrings::MsgMouseMove, &SimpleWorkflow::OnMsgMouseMove},
    {&ConstStrings::MsgMouseLeftDown, &SimpleWorkflow::OnMsgMouseLeftDown},
    {&ConstStrings::MsgMouseLeftUp, &SimpleWorkflow::OnMsgMouseLeftUp},
    {&ConstStrings::MsgMouseInitLeftDrag, &SimpleWorkflow::OnMsgMouseInitLeftDrag},
    {&ConstStrings::MsgMouseLeftDrag, &SimpleWorkflow::OnMsgMouseLeftDrag},
    {&ConstStrings::MsgMouseRightDown, &SimpleWorkflow::OnMsgMouseRightDown},
    {&ConstStrings::MsgMouseRightUp, &SimpleWorkflow::OnMsgMouseRightUp},
    {&ConstStrings::MsgMouseInitRightDrag, &SimpleWorkflow::OnMsgMouseInitRightDrag},
    {&ConstStrings::MsgMouseRightDrag, &SimpleWorkflow::OnMsgMouseRightDrag},
    {&ConstStrings::MsgMouseInitMiddleDrag, &SimpleWorkflow::OnMsgMouseInitMiddleDrag},
    {&ConstStrings::MsgMouseMiddleDrag, &SimpleWorkflow::OnMsgMouseMiddleDrag},
    {&ConstStrings::MsgClickLeft, &SimpleWorkflow::OnMsgClickLeft},
    {&ConstStrings::MsgDoubleClickLeft, &SimpleWorkflow::OnMsgDoubleClickLeft},
};

template <std::size_t... Index>
bool CallOnMsgTouch(SimpleWorkflow& workflow, const TouchMsg::Integers& integers,
                    std::index_sequence<Index...> /*indices*/) {
    return workflow.OnMsgTouch(integers[Index]...);
}

}  // namespace

SimpleWorkflow::SimpleWorkflow(const du::Symbol& name) : Workflow(name) {}

SimpleWorkflow::SimpleWorkflow(const SimpleWorkflow&) = default;

SimpleWorkflow& SimpleWorkflow::operator=(const SimpleWorkflow&) = default;

SimpleWorkflow& SimpleWorkflow::operator=(SimpleWorkflow&&) noexcept = default;

SimpleWorkflow::~SimpleWorkflow() = default;

// A message that does not carry the arguments of its type's handler is not for this workflow.
bool SimpleWorkflow::HandleMsg(const Msg& message) {
    const du::Symbol& type = message.GetType();
    if (!IsMsgTypeHandled(type)) {
        return false;
    }
    switch (message.GetContent()) {
    case Msg::Content::Touch:
        return type == ConstStrings::MsgTouch &&
               CallOnMsgTouch(*this, static_cast<const TouchMsg&>(message).GetIntegers(),
                              std::make_index_sequence<TouchMsg::IntegerCount>());
    case Msg::Content::Timer: {
        const auto& timer = static_cast<const TimerMsg&>(message);
        return type == ConstStrings::MsgTimer && OnMsgTimer(timer.GetNow(), timer.GetInterval());
    }
    case Msg::Content::Mode: {
        const auto& mode = static_cast<const ModeMsg&>(message);
        return type == ConstStrings::MsgSetMode &&
               OnMsgMode(mode.GetWorkflowName(), mode.GetMode(), mode.GetData(), mode.GetValue());
    }
    case Msg::Content::Mouse: return HandleMouseMsg(static_cast<const MouseMsg&>(message));
    case Msg::Content::None: return type == ConstStrings::MsgUpdateStatusBar && OnMsgUpdateStatusBar();
    }
    return false;
}

bool SimpleWorkflow::HandleMouseMsg(const MouseMsg& message) {
    for (const MouseRoute& route : MouseRoutes) {
        if (*route.type == message.GetType()) {
            return (this->*route.handler)(message.GetX(), message.GetY());
        }
    }
    return false;
}

void SimpleWorkflow::AddMsgTypeHandled(const du::Symbol& type, bool whileActive) {
    const auto same = [&](const HandledType& handled) { return handled.type == type; };
    const auto found = std::find_if(m_handledTypes.begin(), m_handledTypes.end(), same);
    if (found != m_handledTypes.end()) {
        found->whileActive = whileActive;
        return;
    }
    m_handledTypes.push_back({type, whileActive});
}

void SimpleWorkflow::RemoveMsgTypeHandled(const du::Symbol& type) {
    std::erase_if(m_handledTypes, [&](const HandledType& handled) { return handled.type == type; });
}

void SimpleWorkflow::RemoveAllMsgTypesHandled() {
    m_handledTypes.clear();
}

bool SimpleWorkflow::IsMsgTypeHandled(const du::Symbol& type) const {
    for (const HandledType& handled : m_handledTypes) {
        if (handled.type == type) {
            return !handled.whileActive || IsActive();
        }
    }
    return false;
}

}  // namespace workflow
