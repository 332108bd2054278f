// Requests that the host completes later, on the same thread.
#pragma once

#include "host/HostApi.h"
#include "host/dg/Box.h"
#include "host/dom/Observer.h"
#include "host/du/UserData.h"

namespace hxk {

class BaseAsyncEvent;

// Hears that a request was withdrawn, so that whoever works on it can let it go at once.
class HOST_API AsyncEventListener {
public:
    virtual ~AsyncEventListener();
    // Called once, as the last thing that Cancel does: the request may be released here.
    virtual void OnCancelled(BaseAsyncEvent& event) = 0;
};

// The life of a request: the host takes it over (OnManage), works, reports progress, and ends it once: Complete,
// CompleteWithError or Cancel. Ending a request that has ended already does nothing.
class HOST_API BaseAsyncEvent : public dom::Observer, public du::UserData {
public:
    virtual void OnManage();
    virtual bool EventHandler();
    virtual void CompleteWithError(int status);
    // Status 0 is success.
    virtual void Complete(int status);
    virtual void Progress(int percent);
    virtual int Status() const;
    // Withdraws the request: the host does not answer it any more.
    virtual void Cancel();
    virtual bool HandleEvent();
    virtual void OnProgress(int percent);

    [[nodiscard]] bool IsCancelled() const noexcept { return m_cancelled; }
    [[nodiscard]] bool IsComplete() const noexcept { return m_complete; }

    // Sets who hears of Cancel; null takes it away. Not owned: a listener takes itself away before it is destroyed.
    void SetListener(AsyncEventListener* listener) noexcept { m_listener = listener; }

protected:
    void SetComplete(int status) noexcept;

private:
    AsyncEventListener* m_listener = nullptr;
    int m_status = 0;
    bool m_cancelled = false;
    bool m_complete = false;
};

// A request whose outcome comes to the class derived from it.
class HOST_API AsyncEvent : public BaseAsyncEvent {
public:
    // Calls OnComplete once, unless the request was cancelled or has ended already.
    void Complete(int status) override;

    // The request has ended; status 0 is success. The host calls it through Complete, on the user-interface thread.
    virtual void OnComplete(int status);
    virtual void OnStatus(int status);
    // Whether OnComplete may run outside the user-interface thread. The default is false.
    virtual bool RunOnCompleteInTask() const;
};

// A request for the bounding box of a view's model.
class HOST_API BoundingBoxEvent : public AsyncEvent {
public:
    BoundingBoxEvent();
    ~BoundingBoxEvent() override;

    // The computed box, in world units. Set by the host before it completes the request; empty until then.
    void SetBox(const dg::DBox& box) noexcept { m_box = box; }
    [[nodiscard]] const dg::DBox& GetBox() const noexcept { return m_box; }

private:
    dg::DBox m_box;
};

}  // namespace hxk
