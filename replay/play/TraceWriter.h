// Traces: one line of JSON for each event, with everything that came of it. See docs/SESSIONS.md for the format.
#pragma once

#include "replay/play/Observation.h"

#include <ostream>

namespace replay {

// Writes the line of one event, line end included. Equal observations give equal bytes.
void WriteTraceLine(const Observation& observation, std::ostream& output);

}  // namespace replay
