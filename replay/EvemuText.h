// The text of an evemu recording, line by line: the device's description and its events, not yet understood as touch.
#pragma once

#include <cstddef>
#include <cstdint>
#include <istream>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace replay {

inline constexpr std::int64_t MicrosecondsPerSecond = 1'000'000;

// The range of an absolute axis, in the device's own units.
struct EvemuAxis {
    std::int32_t minimum = 0;
    std::int32_t maximum = 0;
    std::int32_t fuzz = 0;
    std::int32_t resolution = 0;  // units per millimetre; 0: not known
    std::size_t line = 0;         // where it was read
};

struct EvemuEvent {
    std::int64_t timeUs = 0;  // microseconds of the recording's own clock
    std::uint16_t type = 0;
    std::uint16_t code = 0;
    std::int32_t value = 0;
    std::size_t line = 0;
};

struct EvemuText {
    std::string deviceName;
    std::map<int, EvemuAxis> axes;              // by axis code
    std::map<int, std::int32_t> initialValues;  // of absolute axes, by code, as the comments give them
    std::optional<double> widthMm;              // size of the device, from the comments
    std::optional<double> heightMm;
    std::vector<EvemuEvent> events;
    std::size_t lineCount = 0;
};

// Reads a recording of format 1.0 to 1.3. Throws ReadError at a line that is neither comment, description nor event,
// at an event before the description, and for text that is no recording at all.
[[nodiscard]] EvemuText ReadEvemuText(std::istream& input, const std::string& fileName);

}  // namespace replay
