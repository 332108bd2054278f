// What the text of a recording says about a device, whatever the format: its description and its events, not yet
// understood as touch.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <optional>
#include <string>

namespace replay {

inline constexpr std::int64_t MicrosecondsPerSecond = 1'000'000;
// The largest seconds of an event's time; keeps microseconds well inside 64 bits.
inline constexpr std::int64_t LatestSecond = 1'000'000'000'000;

// The range of an absolute axis, in the device's own units.
struct AxisRange {
    std::int32_t minimum = 0;
    std::int32_t maximum = 0;
    std::int32_t fuzz = 0;
    std::int32_t resolution = 0;  // units per millimetre; 0: not known
    std::size_t line = 0;         // where it was read
};

struct DeviceEvent {
    std::int64_t timeUs = 0;  // microseconds of the recording's own clock
    std::uint16_t type = 0;
    std::uint16_t code = 0;
    std::int32_t value = 0;
    std::size_t line = 0;  // where it was read
};

// In pieces, because a recording may have millions of them.
using DeviceEvents = std::deque<DeviceEvent>;

struct DeviceText {
    bool isDescribed = false;  // the text describes the device; all but the events is empty otherwise
    std::string name;
    std::string node;                           // where the system has the device; empty where the format does not tell
    std::map<int, AxisRange> axes;              // by axis code, 0 to ABS_MAX
    std::map<int, std::int32_t> initialValues;  // of absolute axes, by code
    std::optional<double> widthMm;              // size of the device, where the text has it
    std::optional<double> heightMm;
    DeviceEvents events;  // in the order of the text; their times may run backward

    std::string descriptionFile;  // the files that lines are of, for messages
    std::string eventsFile;
};

}  // namespace replay
