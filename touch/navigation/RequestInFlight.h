// The bounds request that a workflow waits for, and that its copies share.
#pragma once

#include "host/du/SmartPtr.h"

namespace touch {

class TouchGetBoundsEvent;

// A smart pointer whose copies point to nothing once the request has ended: there is nothing to share then, and a
// workflow that took back its own ended request from a copy would be held by it for good.
class RequestInFlight : public du::SmartPtr<TouchGetBoundsEvent> {
public:
    RequestInFlight() noexcept = default;
    RequestInFlight(const RequestInFlight& other);
    RequestInFlight& operator=(const RequestInFlight& other);
    ~RequestInFlight();
    using du::SmartPtr<TouchGetBoundsEvent>::operator=;

private:
    [[nodiscard]] du::SmartPtr<TouchGetBoundsEvent> GetInFlight() const;
};

}  // namespace touch
