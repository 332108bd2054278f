// The text of a recording that `libinput record` has made: YAML with any number of devices.
#pragma once

#include "replay/recording/DeviceText.h"

#include <istream>
#include <string>
#include <string_view>
#include <vector>

namespace replay {

// Whether a text whose first line is this one, comments and empty lines aside, is meant to be such a recording.
[[nodiscard]] bool IsLibinputLine(std::string_view line);

// Reads version 1 of the format: the devices in the order of the file, with the events of the kernel. What libinput
// made of them is passed over. The file name is used in messages only. Throws ReadError for what is not YAML or not
// such a recording, for aliases, which the format does not use, and for deep nesting.
[[nodiscard]] std::vector<DeviceText> ReadLibinputText(std::istream& input, const std::string& fileName);

}  // namespace replay
