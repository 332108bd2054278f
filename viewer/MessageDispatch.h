// Delivers messages to workflows and takes what they ask of their manager.
#pragma once

#include "host/du/SmartPtr.h"
#include "host/workflow/SimpleWorkflow.h"
#include "host/workflow/WorkflowManagerCore.h"
#include "viewer/BoundsService.h"
#include "viewer/CallRecorder.h"
#include "viewer/StatusBar.h"
#include "viewer/TransitionPlayer.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace viewer {

// The manager of the installed workflows. The host delivers its own messages with Deliver; what comes through the
// manager interface was asked by the component and is recorded, for the viewer's own workflows ask nothing.
//
// Workflows may be added and removed, and further messages sent, while a message is being delivered: a removed workflow
// hears nothing more, and an added one hears the message when its rank comes after the workflow that is being asked.
class MessageDispatch final : public workflow::WorkflowManagerCore {
public:
    // The services outlive the manager.
    MessageDispatch(CallRecorder& recorder, BoundsService& bounds, TransitionPlayer& transitions) noexcept
        : m_recorder(recorder), m_bounds(bounds), m_transitions(transitions) {}
    // Removes the workflows that are still there.
    ~MessageDispatch() override;
    MessageDispatch(const MessageDispatch&) = delete;
    MessageDispatch& operator=(const MessageDispatch&) = delete;

    // Installs a workflow behind all of the same or a higher priority, holds it and becomes its manager.
    void Add(const du::SmartPtr<workflow::SimpleWorkflow>& workflow);
    // Takes a workflow out and lets it go; nothing happens when it is not installed.
    void Remove(const workflow::SimpleWorkflow& workflow);
    // The workflow whose answers deliveries tell; null for none.
    void SetComponent(const workflow::SimpleWorkflow* component) noexcept { m_component = component; }

    // Offers a message to the workflows registered for its type in descending priority, up to the first that consumes
    // it. Answers what the component's handler answered; no value when it was not asked.
    std::optional<bool> Deliver(const workflow::Msg& message);

    void SendMessage(const workflow::Msg& message) override;
    void SendModeMessage(const du::Symbol& workflowName, const du::Symbol& mode, int value,
                         const du::SmartPtr<du::RefCounted>& data) override;
    bool SetStatusMessage(int slot, const std::string& text) override;
    void UpdateStatusMessage() override;
    bool ManageObject(const du::SmartPtr<dom::ManagedObject>& object) override;
    void StopTransition() override;
    std::int64_t GetTransitionContext(int kind) override;
    void GetTransitionQueue(du::SmartPtr<workflow::TransitionQueue>& queue) override;

    [[nodiscard]] const StatusBar& GetStatusBar() const noexcept { return m_statusBar; }

private:
    // One delivery under way. Deliveries nest; each keeps its place when the list of workflows changes.
    class Cursor {
    public:
        explicit Cursor(MessageDispatch& dispatch) noexcept : m_dispatch(dispatch), m_outer(dispatch.m_innermost) {
            dispatch.m_innermost = this;
        }
        ~Cursor() { m_dispatch.m_innermost = m_outer; }
        Cursor(const Cursor&) = delete;
        Cursor& operator=(const Cursor&) = delete;

        [[nodiscard]] Cursor* GetOuter() const noexcept { return m_outer; }

        std::size_t next = 0;  // index of the workflow to ask next

    private:
        MessageDispatch& m_dispatch;
        Cursor* m_outer;
    };

    void RemoveAt(std::size_t index);

    CallRecorder& m_recorder;
    BoundsService& m_bounds;
    TransitionPlayer& m_transitions;
    StatusBar m_statusBar;
    std::vector<du::SmartPtr<workflow::SimpleWorkflow>> m_workflows;  // by descending priority
    const workflow::SimpleWorkflow* m_component = nullptr;
    Cursor* m_innermost = nullptr;
};

}  // namespace viewer
