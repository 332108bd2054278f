// The text of evemu: a recording, the description of a device, or its events alone.
#pragma once

#include "replay/recording/DeviceText.h"

#include <istream>
#include <string>

namespace replay {

// Reads format 1.0 to 1.3. Description and events may stand in files of their own: then the other part is missing, and
// somebody else has to bring both together. The file name is used in messages only. Throws ReadError at a line that is
// neither comment, description nor event, at a description behind the first event, and for text that has neither.
[[nodiscard]] DeviceText ReadEvemuText(std::istream& input, const std::string& fileName);

}  // namespace replay
