// Sessions from JSON Lines text. See docs/SESSIONS.md for the format.
#pragma once

#include "replay/session/Session.h"

#include <array>
#include <istream>
#include <string>
#include <string_view>

namespace replay {

// The types of mouse message that a session can hold.
inline constexpr std::array<std::string_view, 13> MouseMessageNames = {
    "MsgMouseLeftDown",   "MsgMouseInitLeftDrag",   "MsgMouseLeftDrag",   "MsgMouseLeftUp", "MsgMouseInitRightDrag",
    "MsgMouseRightDrag",  "MsgMouseInitMiddleDrag", "MsgMouseMiddleDrag", "MsgMouseMove",   "MsgClickLeft",
    "MsgDoubleClickLeft", "MsgMouseRightDown",      "MsgMouseRightUp"};

// Reads a whole session. The file name is used in messages only. Throws ReadError at the first line that is not as the
// format says: an unknown or missing key, a value of another type or out of range, an empty line that is not at the
// end of the file.
[[nodiscard]] Session ReadSession(std::istream& input, const std::string& fileName);

}  // namespace replay
