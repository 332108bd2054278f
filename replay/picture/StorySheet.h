// The pictures of a story: which moments are shown, and what is written under them.
#pragma once

#include "replay/picture/Storyboard.h"
#include "replay/story/Story.h"
#include "scene/Model.h"

#include <cstddef>
#include <memory>
#include <string>

namespace replay {

inline constexpr std::size_t MostPanels = 24;  // of a sheet, with the first and the last
inline constexpr std::size_t MostPanelsOfGesture = 6;

// The first view, each gesture's beginning, steps of equal progress, effects and end, what coasted on, and the last
// view. When there are more gestures than panels those that did most are shown, and the subtitle says how many there
// are.
[[nodiscard]] Sheet MakeSheet(const Story& story, const std::string& title, std::shared_ptr<const scene::Model> model);

}  // namespace replay
