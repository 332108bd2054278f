// The manager of a view's workflows, as a workflow sees it. A host implements it.
#pragma once

#include "host/HostApi.h"
#include "host/dom/ManagedObject.h"
#include "host/du/RefCounted.h"
#include "host/du/SmartPtr.h"
#include "host/du/Symbol.h"
#include "host/workflow/Msg.h"

#include <cstdint>
#include <string>

namespace animation {
class Transition;
}

namespace workflow {

// Takes camera transitions and plays them.
class HOST_API TransitionQueue : public du::RefCounted {
public:
    ~TransitionQueue() override;
    // Queues a transition, which the queue holds from then on; the context is what GetTransitionContext answered.
    virtual void AddTransition(const du::SmartPtr<animation::Transition>& transition, std::int64_t context) = 0;
};

class HOST_API WorkflowManagerCore {
public:
    virtual ~WorkflowManagerCore();

    // Delivers a message to the workflows registered for its type, the sender included, before it returns.
    virtual void SendMessage(const Msg& message) = 0;
    // The same for a mode message, addressed to a workflow by name.
    virtual void SendModeMessage(const du::Symbol& workflowName, const du::Symbol& mode, int value,
                                 const du::SmartPtr<du::RefCounted>& data) = 0;
    // Stores the text of a status-bar slot; false when there is no such slot.
    virtual bool SetStatusMessage(int slot, const std::string& text) = 0;
    // Repaints the status bar from the stored texts.
    virtual void UpdateStatusMessage() = 0;
    // Takes an asynchronous request over and holds it until it ends; false when the host will not run it.
    virtual bool ManageObject(const du::SmartPtr<dom::ManagedObject>& object) = 0;

    // Stops a running camera transition where it is.
    virtual void StopTransition() = 0;
    // The value to give to AddTransition; 0 asks for the view's own context.
    virtual std::int64_t GetTransitionContext(int kind) = 0;
    // The object that takes transitions; null when the host plays none.
    virtual void GetTransitionQueue(du::SmartPtr<TransitionQueue>& queue) = 0;
};

}  // namespace workflow
