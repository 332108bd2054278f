// The bounds request object. Tested by tests/component/SceneBoundsTest.cpp.
#include "touch/TouchGetBoundsEvent.h"

#include "touch/Boundary.h"
#include "touch/TouchWorkflow.h"

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

}  // namespace touch
