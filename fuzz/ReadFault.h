// The demand that both readers' fuzzers make of an error: one line that names the file, the line and the fault.
#pragma once

#include "fuzz/Require.h"
#include "replay/files/ReadError.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

namespace fuzz {

// The longest message a reader needs: quoted text is cut off, so a long one repeats its input.
inline constexpr std::size_t LongestMessageBytes = 500;

// The line number after "FILE:", up to the one behind the last line of the text. An error of the file as a whole has
// none, where the reader allows that.
inline void RequireNamedFault(const replay::ReadError& error, const std::string& fileName, std::string_view text,
                              bool mayBeOfWholeFile) {
    const std::string_view message = error.what();
    const std::string shown = "a message that names file, line and fault, found: " + std::string(message);
    Require(message.starts_with(fileName + ":"), shown);
    Require(message.size() <= LongestMessageBytes, shown);
    Require(message.find_first_of("\n\r") == std::string_view::npos, shown);

    std::string_view rest = message.substr(fileName.size() + 1);
    const std::size_t digits = std::min(rest.find_first_not_of("0123456789"), rest.size());
    if (digits > 0) {
        const auto lines = static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')) + 1;
        const std::size_t line = std::stoul(std::string(rest.substr(0, digits)));
        Require(line >= 1 && line <= lines && rest.substr(digits, 1) == ":", shown);
        rest.remove_prefix(digits + 1);
    } else {
        Require(mayBeOfWholeFile, shown);
    }
    Require(rest.size() > 1 && rest.front() == ' ', shown);
}

}  // namespace fuzz
