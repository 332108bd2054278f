// The model that views show when no other is given.
#pragma once

#include "scene/Model.h"

#include <memory>

namespace scene {

// A bearing block: base plate, upright with a bored boss, rib, cover with a raised arrow, and a shaft with a flange
// and a key. No two sides look alike. Z is up, the shaft and the arrow run along X, lengths are within [-3, 3], and the
// origin is the middle of it.
[[nodiscard]] std::shared_ptr<const Model> MakeMachinePart();

}  // namespace scene
