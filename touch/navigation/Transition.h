// A camera transition: the record that the component fills and the host's transition queue plays.
#pragma once

#include "host/du/RefCounted.h"
#include "host/du/SmartPtr.h"
#include "host/hxk/Scene.h"

#include <cstdint>

namespace animation {

// Plain data with public members: the component writes it once and gives it away, the host reads it. The host can tell
// the derived record from the kind.
class Transition : public du::RefCounted {
public:
    Transition();
    // Releases the attachment and the scene, in that order.
    ~Transition() override;

    std::int64_t startDelay = 0;              // host milliseconds from the first tick after queueing
    std::int64_t duration = 0;                // host milliseconds
    du::SmartPtr<hxk::Scene> scene;           // of the view; null when the view has none
    std::int32_t kind = 0;                    // 0: nothing to play
    std::int64_t reserved = 0;                // not used by the component
    bool flag = false;                        // not used by the component
    du::SmartPtr<du::RefCounted> attachment;  // not used by the component
};

}  // namespace animation
