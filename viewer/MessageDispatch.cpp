// Asks workflows by rank, those of equal rank in the order in which they came, until one consumes the message.
// Deliveries nest: each has a cursor, and the cursors follow when a workflow comes or goes, so that none is asked twice
// or left out.
#include "viewer/MessageDispatch.h"

#include "host/workflow/ConstStrings.h"

#include <algorithm>
#include <iterator>

namespace viewer {

MessageDispatch::~MessageDispatch() {
    while (!m_workflows.empty()) {
        RemoveAt(m_workflows.size() - 1);
    }
}

void MessageDispatch::Add(const du::SmartPtr<workflow::SimpleWorkflow>& workflow) {
    const unsigned int priority = workflow->GetPriority();
    const auto lower = std::find_if(m_workflows.begin(), m_workflows.end(),
                                    [&](const auto& other) { return other->GetPriority() < priority; });
    const auto index = static_cast<std::size_t>(std::distance(m_workflows.begin(), lower));
    m_workflows.insert(lower, workflow);
    for (Cursor* cursor = m_innermost; cursor != nullptr; cursor = cursor->GetOuter()) {
        cursor->next += index < cursor->next ? 1 : 0;
    }
    workflow->SetManager(this);
    workflow->OnAdd();
}

void MessageDispatch::Remove(const workflow::SimpleWorkflow& workflow) {
    const auto found = std::find(m_workflows.begin(), m_workflows.end(), &workflow);
    if (found != m_workflows.end()) {
        RemoveAt(static_cast<std::size_t>(std::distance(m_workflows.begin(), found)));
    }
}

void MessageDispatch::RemoveAt(std::size_t index) {
    const du::SmartPtr<workflow::SimpleWorkflow> removed = m_workflows[index];
    removed->OnRemove();
    m_workflows.erase(m_workflows.begin() + static_cast<std::ptrdiff_t>(index));
    for (Cursor* cursor = m_innermost; cursor != nullptr; cursor = cursor->GetOuter()) {
        cursor->next -= index < cursor->next ? 1 : 0;
    }
    removed->SetManager(nullptr);
    if (removed == m_component) {
        m_component = nullptr;
    }
}

std::optional<bool> MessageDispatch::Deliver(const workflow::Msg& message) {
    std::optional<bool> componentAnswer;
    Cursor cursor(*this);
    while (cursor.next < m_workflows.size()) {
        // Held, because its own handler may remove it.
        const du::SmartPtr<workflow::SimpleWorkflow> workflow = m_workflows[cursor.next++];
        if (!workflow->IsMsgTypeHandled(message.GetType())) {
            continue;
        }
        const bool isComponent = workflow == m_component;
        const bool consumed = workflow->HandleMsg(message);
        if (isComponent) {
            componentAnswer = consumed;
        }
        if (consumed) {
            break;
        }
    }
    return componentAnswer;
}

void MessageDispatch::SendMessage(const workflow::Msg& message) {
    if (!m_recorder.IsEnabled()) {
        Deliver(message);
        return;
    }
    SendMessageCall call{message.GetType().GetString(), 0, 0, {}};
    if (message.GetContent() == workflow::Msg::Content::Mouse) {
        const auto& mouse = static_cast<const workflow::MouseMsg&>(message);
        call.x = mouse.GetX();
        call.y = mouse.GetY();
    }
    const std::size_t index = m_recorder.Add(call);
    m_recorder.SetComponentAnswer(index, Deliver(message));
}

void MessageDispatch::SendModeMessage(const du::Symbol& workflowName, const du::Symbol& mode, int value,
                                      const du::SmartPtr<du::RefCounted>& data) {
    if (m_recorder.IsEnabled()) {
        m_recorder.Add(SendModeMessageCall{workflowName.GetString(), mode.GetString(), value});
    }
    Deliver(workflow::ModeMsg(workflow::ConstStrings::MsgSetMode, workflowName, mode, data, value));
}

bool MessageDispatch::SetStatusMessage(int slot, const std::string& text) {
    if (m_recorder.IsEnabled()) {
        m_recorder.Add(SetStatusMessageCall{slot, text});
    }
    return m_statusBar.SetText(slot, text);
}

void MessageDispatch::UpdateStatusMessage() {
    if (m_recorder.IsEnabled()) {
        m_recorder.Add(PlainCall{"UpdateStatusMessage"});
    }
    m_statusBar.Repaint();
}

bool MessageDispatch::ManageObject(const du::SmartPtr<dom::ManagedObject>& object) {
    return m_bounds.Manage(object);
}

void MessageDispatch::StopTransition() {
    if (m_recorder.IsEnabled()) {
        m_recorder.Add(PlainCall{"StopTransition"});
    }
    m_transitions.Stop();
}

std::int64_t MessageDispatch::GetTransitionContext(int /*kind*/) {
    return TransitionPlayer::GetContext();
}

void MessageDispatch::GetTransitionQueue(du::SmartPtr<workflow::TransitionQueue>& queue) {
    m_transitions.GetQueue(queue);
}

}  // namespace viewer
