// Defaults of a workflow. What it asks of a manager is nothing to do while it has none, which is so before it is
// installed and after it is removed; the answer is then false.
#include "host/workflow/Workflow.h"

namespace workflow {

TransitionQueue::~TransitionQueue() = default;

WorkflowManagerCore::~WorkflowManagerCore() = default;

Workflow::Workflow(const du::Symbol& name) : m_name(name) {}

Workflow::Workflow(const Workflow&) = default;

Workflow& Workflow::operator=(const Workflow&) = default;

Workflow::~Workflow() = default;

void Workflow::SetView(const du::SmartPtr<hxk::View>& view) {
    m_view = view;
}

void Workflow::SetManager(WorkflowManagerCore* manager) {
    m_manager = manager;
}

void Workflow::SetPersistent(bool persistent) {
    m_persistent = persistent;
}

bool Workflow::GetPersistent() const {
    return m_persistent;
}

void Workflow::SetPriority(unsigned int priority) {
    m_priority = priority;
}

unsigned int Workflow::GetPriority() const {
    return m_priority;
}

void Workflow::Complete() {}

bool Workflow::HandleMsg(const Msg& /*message*/) {
    return false;
}

bool Workflow::HandleQuery(const du::Symbol& /*query*/, du::SmartPtr<du::RefCounted>& /*answer*/) {
    return false;
}

void Workflow::OnAdd() {}

void Workflow::OnRemove() {}

bool Workflow::HandleTraceString(const std::string& /*text*/) {
    return false;
}

bool Workflow::IsActive() const {
    return m_active;
}

void Workflow::SetActive(bool active) {
    m_active = active;
}

void Workflow::SendMessage(const Msg& message) {
    if (m_manager != nullptr) {
        m_manager->SendMessage(message);
    }
}

void Workflow::SendModeMessage(const du::Symbol& workflowName, const du::Symbol& mode, int value,
                               const du::SmartPtr<du::RefCounted>& data) {
    if (m_manager != nullptr) {
        m_manager->SendModeMessage(workflowName, mode, value, data);
    }
}

bool Workflow::SetStatusMessage(int slot, const std::string& text) {
    return m_manager != nullptr && m_manager->SetStatusMessage(slot, text);
}

void Workflow::UpdateStatusMessage() {
    if (m_manager != nullptr) {
        m_manager->UpdateStatusMessage();
    }
}

bool Workflow::ManageObject(const du::SmartPtr<dom::ManagedObject>& object) {
    return m_manager != nullptr && m_manager->ManageObject(object);
}

}  // namespace workflow
