// Sessions as JSON Lines text. See docs/SESSIONS.md for the format.
#pragma once

#include "replay/session/Session.h"

#include <ostream>

namespace replay {

// Writes a session so that ReadSession gives an equal one. Keys of the header that have their defaults are left out.
// Every number must be finite, every string UTF-8 and every name one that the format knows; what a view of its kind
// does not have is not written.
void WriteSession(const Session& session, std::ostream& output);

}  // namespace replay
