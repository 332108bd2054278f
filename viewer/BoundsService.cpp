// An answer may withdraw requests, make new ones or attach another view. So a request leaves the list before it is
// answered, and what an answer asks for waits for the next tick.
#include "viewer/BoundsService.h"

#include <algorithm>

namespace viewer {

BoundsService::~BoundsService() {
    FailAll();
}

bool BoundsService::Manage(const du::SmartPtr<dom::ManagedObject>& object) {
    const bool accepted = Accept(object);
    if (m_recorder.IsEnabled()) {
        m_recorder.Add(ManageObjectCall{accepted});
    }
    return accepted;
}

bool BoundsService::Accept(const du::SmartPtr<dom::ManagedObject>& object) {
    const du::SmartPtr<hxk::BoundingBoxEvent> request(dynamic_cast<hxk::BoundingBoxEvent*>(object.Get()));
    if (!request || request->IsCancelled() || request->IsComplete()) {
        return false;
    }
    if (m_answer == BoundsAnswer::Refused || m_failingAll) {
        return false;
    }
    if (Find(request.Get()) == m_waiting.end()) {
        m_waiting.push_back({request, nullptr, 0});
        request->SetListener(this);
        request->OnManage();
    }
    return true;
}

void BoundsService::Ask(ViewerShapeView& view, const hxk::BoundingBoxEvent* request) {
    const auto found = Find(request);
    if (found != m_waiting.end()) {
        found->view = &view;
        found->turn = m_turn;
    }
}

void BoundsService::AnswerWaiting() {
    if (m_answer == BoundsAnswer::Never) {
        return;
    }
    // An answer may cancel other requests and make new ones, so each round looks for the next one afresh.
    const std::uint64_t turn = m_turn++;
    for (;;) {
        const auto found = std::find_if(m_waiting.begin(), m_waiting.end(),
                                        [&](const Waiting& w) { return w.view != nullptr && w.turn <= turn; });
        if (found == m_waiting.end()) {
            return;
        }
        const Waiting waiting = Take(found);
        if (m_answer == BoundsAnswer::NextTick) {
            waiting.request->SetBox(waiting.view->GetBounds());
            waiting.request->Complete(0);
        } else {
            waiting.request->CompleteWithError(FailedStatus);
        }
    }
}

void BoundsService::FailAll() {
    m_failingAll = true;
    while (!m_waiting.empty()) {
        Take(m_waiting.begin()).request->CompleteWithError(FailedStatus);
    }
    m_failingAll = false;
}

void BoundsService::OnCancelled(hxk::BaseAsyncEvent& event) {
    if (m_recorder.IsEnabled()) {
        m_recorder.Add(PlainCall{"Cancel"});
    }
    const auto found = Find(&event);
    if (found != m_waiting.end()) {
        Take(found);
    }
}

std::vector<BoundsService::Waiting>::iterator BoundsService::Find(const hxk::BaseAsyncEvent* event) {
    return std::find_if(m_waiting.begin(), m_waiting.end(),
                        [&](const Waiting& waiting) { return waiting.request.Get() == event; });
}

// The entry leaves the list first: whatever its release or answer reaches finds the list in order.
BoundsService::Waiting BoundsService::Take(std::vector<Waiting>::iterator position) {
    Waiting taken = *position;
    m_waiting.erase(position);
    taken.request->SetListener(nullptr);
    return taken;
}

}  // namespace viewer
