// The component's request for the bounding box of a view's model.
#pragma once

#include "host/du/SmartPtr.h"
#include "host/du/Symbol.h"
#include "host/hxk/AsyncEvent.h"

namespace touch {

class TouchWorkflow;

// Hands the host's answer to the workflow that asked, which it keeps alive until then (see SceneBounds.cpp).
class TouchGetBoundsEvent : public hxk::BoundingBoxEvent {
public:
    // A null workflow is allowed: nobody then hears the answer.
    explicit TouchGetBoundsEvent(const du::SmartPtr<TouchWorkflow>& workflow);
    ~TouchGetBoundsEvent() override;

    // "touch::TouchGetBoundsEvent".
    du::Symbol GetClassName() const override;
    // Status 0: the workflow receives the computed box; anything else: an empty one.
    void OnComplete(int status) override;
    // Cancels the request for a workflow that asks anew. It may be the request of another one, which has shared it:
    // that one stops waiting too. The two would otherwise hold each other for good.
    void Withdraw();

private:
    du::SmartPtr<TouchWorkflow> m_workflow;
};

}  // namespace touch
