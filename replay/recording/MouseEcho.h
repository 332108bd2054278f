// The mouse messages that a system makes of touch, for sessions whose recording holds only the fingers.
#pragma once

#include "replay/session/Session.h"

namespace replay {

// Adds the echo of each touch's first finger: the pointer moves there and the left button goes down, is dragged once
// the finger has left its place by more than a few pixels, and goes up, with a click if it was never dragged and no
// other finger joined it. Echoes arrive one event late, as on a real system, where they come a few milliseconds after
// their touch frame.
void AddMouseEcho(Session& session);

}  // namespace replay
