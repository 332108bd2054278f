// The error of every file reader: one line that says where the fault is and what was expected.
#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>

namespace replay {

// what() is "FILE:LINE: text", or "FILE: text" where no line applies. Lines count from 1.
class ReadError : public std::runtime_error {
public:
    ReadError(const std::string& fileName, const std::string& text) : std::runtime_error(fileName + ": " + text) {}
    ReadError(const std::string& fileName, std::size_t line, const std::string& text)
        : std::runtime_error(fileName + ":" + std::to_string(line) + ": " + text) {}
};

}  // namespace replay
