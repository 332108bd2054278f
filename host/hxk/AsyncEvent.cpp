// A request ends once, whichever of completion, failure and withdrawal comes first. A failure that gives the status of
// success counts as 1, so that it cannot be taken for success.
#include "host/hxk/AsyncEvent.h"

#include <utility>

namespace hxk {

AsyncEventListener::~AsyncEventListener() = default;

void BaseAsyncEvent::OnManage() {}

bool BaseAsyncEvent::EventHandler() {
    return false;
}

void BaseAsyncEvent::CompleteWithError(int status) {
    Complete(status == 0 ? 1 : status);
}

void BaseAsyncEvent::Complete(int status) {
    if (m_cancelled || m_complete) {
        return;
    }
    SetComplete(status);
}

void BaseAsyncEvent::Progress(int percent) {
    OnProgress(percent);
}

int BaseAsyncEvent::Status() const {
    return m_status;
}

void BaseAsyncEvent::Cancel() {
    if (m_cancelled || m_complete) {
        return;
    }
    m_cancelled = true;
    if (m_listener != nullptr) {
        std::exchange(m_listener, nullptr)->OnCancelled(*this);
    }
}

bool BaseAsyncEvent::HandleEvent() {
    return false;
}

void BaseAsyncEvent::OnProgress(int /*percent*/) {}

void BaseAsyncEvent::SetComplete(int status) noexcept {
    m_status = status;
    m_complete = true;
}

void AsyncEvent::Complete(int status) {
    if (IsCancelled() || IsComplete()) {
        return;
    }
    SetComplete(status);
    OnComplete(status);
}

void AsyncEvent::OnComplete(int /*status*/) {}

void AsyncEvent::OnStatus(int /*status*/) {}

bool AsyncEvent::RunOnCompleteInTask() const {
    return false;
}

BoundingBoxEvent::BoundingBoxEvent() = default;

BoundingBoxEvent::~BoundingBoxEvent() = default;

}  // namespace hxk
