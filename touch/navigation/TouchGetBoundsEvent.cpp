// The bounds request object. Tested by tests/component/SceneBoundsTest.cpp.
#include "touch/navigation/TouchGetBoundsEvent.h"

#include "touch/TouchWorkflow.h"
#include "touch/shell/Boundary.h"

namespace touch {
namespace {

const du::Symbol ClassName("touch::TouchGetBoundsEvent");

}  // namespace

TouchGetBoundsEvent::TouchGetBoundsEvent(const du::SmartPtr<TouchWorkflow>& workflow) : m_workflow(workflow) {}

TouchGetBoundsEvent::~TouchGetBoundsEvent() = default;

du::Symbol TouchGetBoundsEvent::GetClassName() const {
    return ClassName;
}

void TouchGetBoundsEvent::OnComplete(int status) {
    Guarded(*this, [&] {
        // The answer can release this request, and with it the last reference to the workflow.
        const du::SmartPtr<TouchWorkflow> workflow = m_workflow;
        if (!workflow) {
            return false;
        }
        const dg::DBox bounds = status == 0 ? GetBox() : dg::DBox::EMPTY;
        workflow->ReceiveBounds(bounds);
        return true;
    });
}

// The one that waits may have the last reference, and the host lets it go when it hears of it.
void TouchGetBoundsEvent::Cancel() {
    const Held held(*this);
    if (m_workflow && m_workflow->m_boundsEvent == this) {
        m_workflow->m_boundsEvent = nullptr;
    }
    BoundingBoxEvent::Cancel();
}

RequestInFlight::RequestInFlight(const RequestInFlight& other)
    : du::SmartPtr<TouchGetBoundsEvent>(other.GetInFlight()) {}

RequestInFlight& RequestInFlight::operator=(const RequestInFlight& other) {
    *this = other.GetInFlight();
    return *this;
}

RequestInFlight::~RequestInFlight() = default;

du::SmartPtr<TouchGetBoundsEvent> RequestInFlight::GetInFlight() const {
    if (*this == nullptr || Get()->IsComplete() || Get()->IsCancelled()) {
        return nullptr;
    }
    return *this;
}

}  // namespace touch
