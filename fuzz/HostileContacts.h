// Contacts as no toolkit should report them, and the laws of what a feeder makes of them.
#pragma once

#include "fuzz/Choices.h"

#include <string>
#include <vector>

namespace fuzz {

// Plays contacts, pauses, times and geometries of the choices until those are over, `maxEvents` at most; then cancels
// all. Answers the first law that was broken, empty when none was; what was sent goes to `sent`, as numbers.
//
// The laws: frames have up to ten records, of different fingers, with one time; every finger lands first, is in every
// frame while it is down, and lifts once; places are inside the view and never 0; times run back only when a touch
// begins; ticks are even, and not more in an Advance than its steps. With a fixed step each frame has a tick, no frame
// lands and lifts, and the first finger of a touch lands alone. In the end no finger is down.
[[nodiscard]] std::string PlayHostileContacts(Choices& choices, int maxEvents, std::vector<std::int64_t>& sent);

}  // namespace fuzz
