// Answers requests for the bounding box of a shape view.
#pragma once

#include "host/dom/ManagedObject.h"
#include "host/du/SmartPtr.h"
#include "host/hxk/AsyncEvent.h"
#include "viewer/CallRecorder.h"
#include "viewer/ViewSpec.h"
#include "viewer/ViewerViews.h"

#include <cstdint>
#include <vector>

namespace viewer {

// A request is handed over with Manage, says with Ask which view it is about, and is answered at the start of the next
// tick with the box that this view has then. The service holds a request, and the view it asks, until it is answered or
// cancelled; a cancelled one is never answered.
//
// A request and the workflow that waits for it hold each other until the answer comes. A host that just dropped a
// waiting request would leak both, so a service that is emptied answers everything as failed.
class BoundsService final : private hxk::AsyncEventListener {
public:
    BoundsService(CallRecorder& recorder, BoundsAnswer answer) noexcept : m_recorder(recorder), m_answer(answer) {}
    ~BoundsService() override;
    BoundsService(const BoundsService&) = delete;
    BoundsService& operator=(const BoundsService&) = delete;

    // Takes a request over. False for anything but a bounding-box request that has not ended yet, and for every request
    // when the host refuses them.
    bool Manage(const du::SmartPtr<dom::ManagedObject>& object);
    // Says which view a request asks. Nothing happens for a request that was not accepted.
    void Ask(ViewerShapeView& view, const hxk::BoundingBoxEvent* request);

    // Answers the requests that asked a view before this call.
    void AnswerWaiting();
    // Ends every request as failed, also those that have not asked yet; refuses new ones meanwhile.
    void FailAll();

    [[nodiscard]] std::size_t GetWaitingCount() const noexcept { return m_waiting.size(); }

private:
    static constexpr int FailedStatus = 1;

    struct Waiting {
        du::SmartPtr<hxk::BoundingBoxEvent> request;
        du::SmartPtr<ViewerShapeView> view;  // null until the request asks
        std::uint64_t turn = 0;              // the number of AnswerWaiting calls before it asked
    };

    void OnCancelled(hxk::BaseAsyncEvent& event) override;
    bool Accept(const du::SmartPtr<dom::ManagedObject>& object);
    std::vector<Waiting>::iterator Find(const hxk::BaseAsyncEvent* event);
    Waiting Take(std::vector<Waiting>::iterator position);

    CallRecorder& m_recorder;
    BoundsAnswer m_answer;
    std::vector<Waiting> m_waiting;
    std::uint64_t m_turn = 0;
    bool m_failingAll = false;
};

}  // namespace viewer
