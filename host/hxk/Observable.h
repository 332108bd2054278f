// Changes of a view sent as one, so that a touch frame that moves it several times repaints it once.
#pragma once

#include "host/HostApi.h"
#include "host/du/SmartPtr.h"

namespace hxk {

// Something whose changes others watch. Between BeginUpdateGroup and the matching EndUpdateGroup the notifications of
// its changes are held back and then sent as one. Groups nest.
class HOST_API Observable : public virtual du::RefCounted {
public:
    ~Observable() override;
    virtual void BeginUpdateGroup() = 0;
    virtual void EndUpdateGroup() = 0;

    // Groups the changes made during its own life. Holds a reference to the observable; null is allowed.
    class UpdateGroup {
    public:
        explicit UpdateGroup(const du::SmartPtr<Observable>& observable) : UpdateGroup(observable.Get()) {}
        explicit UpdateGroup(Observable* observable) : m_observable(observable) {
            if (m_observable) {
                m_observable->BeginUpdateGroup();
            }
        }
        // What the observable throws ends here: a destructor has nobody to tell.
        ~UpdateGroup() {
            if (!m_observable) {
                return;
            }
            try {
                m_observable->EndUpdateGroup();
            } catch (...) {  // NOLINT(bugprone-empty-catch)
            }
        }
        UpdateGroup(const UpdateGroup&) = delete;
        UpdateGroup& operator=(const UpdateGroup&) = delete;

    private:
        du::SmartPtr<Observable> m_observable;
    };
};

}  // namespace hxk
