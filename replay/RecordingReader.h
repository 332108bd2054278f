// Recordings of multi-touch devices, as evemu and libinput write them.
#pragma once

#include <cstdint>
#include <istream>
#include <optional>
#include <string>
#include <vector>

namespace replay {

// The range of one direction of a device. The maximum is above the minimum.
struct DeviceAxis {
    std::int32_t minimum = 0;
    std::int32_t maximum = 0;
    std::optional<double> sizeMm;  // physical length in millimetres, where the recording tells it

    friend bool operator==(const DeviceAxis&, const DeviceAxis&) = default;
};

// A finger on the device. Slot and tracking id together stay the same from its landing to its lift.
struct Contact {
    std::int32_t slot = 0;
    std::int32_t trackingId = 0;  // 0 or more
    std::int32_t x = 0;           // device units, from the left
    std::int32_t y = 0;           // device units, from the top

    friend bool operator==(const Contact&, const Contact&) = default;
};

// What the device told at one moment: the fingers that are down then, by ascending slot.
struct Report {
    std::int64_t timeUs = 0;  // microseconds since the first report
    std::vector<Contact> contacts;

    friend bool operator==(const Report&, const Report&) = default;
};

struct Recording {
    std::string deviceName;
    DeviceAxis x;
    DeviceAxis y;
    std::vector<Report> reports;  // in the order of their times, also those that changed nothing; never empty
};

// Longer recordings are refused: played with a tick every 10 ms they would fill the memory.
inline constexpr std::int64_t LongestRecordingUs = 3'600'000'000;

// Reads a recording of evemu (format 1.0 to 1.3) or of `libinput record` (version 1) from a device that speaks
// multi-touch protocol B or A; fingers of a protocol A device are tracked on the way. Fingers that lay on the device
// before the recording began are contacts from the first report on. After a gap (SYN_DROPPED) the reading goes on with
// what was known before it.
//
// The device, where it is not empty, says what the text leaves open: for events of evemu alone it is the file of their
// description, for a recording of several touch devices the name or the node of one. Without it the description is
// taken from the file of the same name that ends in .desc, and a recording must have one touch device with events.
//
// Throws ReadError, in the name of the file that is at fault, for text that is no recording, a device without
// multi-touch axes, a description or events that are missing, time that runs backward, and an end in the middle of a
// report.
[[nodiscard]] Recording ReadRecording(std::istream& input, const std::string& fileName, const std::string& device = {});

// The same from a file. Throws ReadError also for a file that cannot be read.
[[nodiscard]] Recording ReadRecordingFile(const std::string& fileName, const std::string& device = {});

}  // namespace replay
