// What a host's event loop can call: messages, timeouts and idle time.
#pragma once

#include "host/HostApi.h"
#include "host/dom/ManagedObject.h"

namespace dom {

// A managed object that the host's event loop can notify. Each operation answers whether the notification was used;
// the defaults answer false.
class HOST_API Observer : public ManagedObject {
public:
    virtual bool HandleMessage(const du::Symbol& message);
    virtual bool HandleTimeoutEvent(int timer);
    virtual bool HandleOnIdleEvent();
};

}  // namespace dom
