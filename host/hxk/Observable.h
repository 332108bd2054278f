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
    class HOST_API UpdateGroup {
    public:
        explicit UpdateGroup(const du::SmartPtr<Observable>& observable);
        ~UpdateGroup();
        UpdateGroup(const UpdateGroup&) = delete;
        UpdateGroup& operator=(const UpdateGroup&) = delete;

    private:
        du::SmartPtr<Observable> m_observable;
    };
};

}  // namespace hxk
