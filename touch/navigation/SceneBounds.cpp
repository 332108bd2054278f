// The request for the model's bounding box, which scales zoom and flight. The host answers later; until then the
// previous box stays in use. Decides what counts as an answer: every one that comes, a failed one as an empty box.
//
// Who keeps whom alive: while a request is in flight the workflow holds the request and the request holds the workflow.
// Receiving the answer ends that circle, and so does cancelling the request, whether the host does it or a newer
// request takes its place. A host that drops the workflow while a request is waiting must therefore end the request
// too. One that was cancelled holds the workflow only for as long as the host holds the request. Tested by
// tests/component/SceneBoundsTest.cpp.
#include "host/dp/HXTracer.h"
#include "touch/TouchWorkflow.h"
#include "touch/navigation/TouchGetBoundsEvent.h"
#include "touch/shell/Boundary.h"

namespace touch {

void TouchWorkflow::RequestBounds() {
    if (!m_frame.HasShapeView()) {
        return;
    }
    if (const du::SmartPtr<TouchGetBoundsEvent> earlier = m_boundsEvent) {
        earlier->Cancel();
    }
    // Held here too: the host may answer, and so end the request, before it returns.
    const du::SmartPtr<TouchGetBoundsEvent> request(new TouchGetBoundsEvent(du::SmartPtr<TouchWorkflow>(this)));
    m_boundsEvent = request;
    try {
        if (ManageObject(request)) {
            m_frame.GetShapeView().GetBoundingBox(false, true, request.Get());
            return;
        }
        const dp::HXTracer tracer("touch", "TouchWorkflow");
        tracer(dp::TraceError) << "RequestBounds(): GetBoundingBox() failed.\n";
    } catch (...) {
        // Nobody may be left to answer it, and the two would hold each other for good.
        if (m_boundsEvent == request) {
            m_boundsEvent = nullptr;
        }
        throw;
    }
    ReceiveBounds(dg::DBox::EMPTY);
}

void TouchWorkflow::ReceiveBounds(const dg::DBox& bounds) {
    Guarded(*this, [&] {
        m_modelBounds = bounds;
        m_boundsEvent = nullptr;
        GetWorldDistance();
        return true;
    });
}

}  // namespace touch
