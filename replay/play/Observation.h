// What came of one event of a session.
#pragma once

#include "replay/session/Session.h"
#include "touch/GestureTypes.h"
#include "viewer/CallRecorder.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <vector>

namespace replay {

// The references are valid during the observer's call only.
struct Observation {
    std::size_t number;           // of the event, from 1
    std::optional<bool> handled;  // the component's answer; no value where it was not asked
    // The component's state after the event; no value where its plug-in does not tell.
    std::optional<touch::GestureType> gesture;
    std::optional<touch::GestureState> state;
    std::optional<bool> navigate;            // navigate mode (true) or select mode (false)
    const std::vector<viewer::Call>& calls;  // what the component asked of the host, in order
    const Event& event;
};

using Observer = std::function<void(const Observation&)>;

}  // namespace replay
