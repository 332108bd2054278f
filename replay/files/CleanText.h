// Text from files, made fit to be shown.
#pragma once

#include <string>

namespace replay {

// The text with one character for every valid UTF-8 character, and a question mark for anything else.
[[nodiscard]] std::string CleanText(const std::string& text);

}  // namespace replay
