// Recordings of multi-touch devices, as evemu and libinput write them.
#pragma once

#include "replay/recording/ReportList.h"

#include <cstdint>
#include <istream>
#include <optional>
#include <string>

namespace replay {

// The range of one direction of a device. The maximum is above the minimum.
struct DeviceAxis {
    std::int32_t minimum = 0;
    std::int32_t maximum = 0;
    std::optional<double> sizeMm;  // physical length in millimetres, where the recording has it

    friend bool operator==(const DeviceAxis&, const DeviceAxis&) = default;
};

struct Recording {
    std::string deviceName;
    DeviceAxis x;
    DeviceAxis y;
    ReportList reports;  // never empty
};

// Longer recordings are refused: played with a tick every 10 ms they would fill the memory. So are slots beyond the
// number of them that a device may have, counted from its first one.
inline constexpr std::int64_t LongestRecordingUs = 3'600'000'000;
inline constexpr std::int32_t MostSlots = 1024;

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

}  // namespace replay
