// Writes a story as text.
#pragma once

#include "replay/story/Story.h"

#include <ostream>
#include <string>

namespace replay {

// Writes a heading and the lines, in columns.
void WriteStory(const Story& story, const std::string& title, std::ostream& output);

// The heading's second part, as "412 events in 2.25 s, shapeview 1280 x 800 px, width 16 units".
[[nodiscard]] std::string SummaryOf(const Story& story);

}  // namespace replay
