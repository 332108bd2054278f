// 3D models from files.
#pragma once

#include "viewer/Model.h"

#include <memory>
#include <string>

namespace replay {

// Reads a model in any format that the model library knows, by the file's ending and content. Each mesh of each node
// becomes a part named after its node, with a number behind a name that is taken. Coordinates stay as they are, with
// the nodes' placements applied; units and the upward axis are those of the file. Throws ReadError, one line, for a
// file that cannot be read, holds no triangles, or has coordinates that are not finite.
[[nodiscard]] std::shared_ptr<const viewer::Model> LoadModelFile(const std::string& path);

}  // namespace replay
