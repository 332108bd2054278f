// The component's request for the bounding box of a view's model.
#pragma once

#include "host/du/SmartPtr.h"
#include "host/du/Symbol.h"
#include "host/hxk/AsyncEvent.h"
#include "touch/LiveObjects.h"

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
    // Ends the request for the workflow that asked, too: the two would otherwise hold each other for good. Called by
    // the host, and by a workflow that asks anew, which may have shared the request of another one.
    void Cancel() override;

private:
    du::SmartPtr<TouchWorkflow> m_workflow;
    LiveObject m_live{ObjectKind::BoundsRequest};
};

}  // namespace touch
