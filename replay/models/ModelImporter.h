// Models out of files by way of a model library, which is not to be trusted with files of unknown origin: call this in
// a process of its own.
#pragma once

#include "replay/models/ModelFile.h"
#include "scene/Model.h"

#include <filesystem>
#include <string>

namespace replay {

struct ImportedModel {
    scene::Model model;       // parts with vertices and triangles, Z up; nothing about them is sure
    std::string refusedFile;  // that the model refers to and that was not read; empty when there is none
};

// Reads an ordinary file, whose path has no links. Throws ModelFault. The library's scene stays in memory.
[[nodiscard]] ImportedModel ImportModel(const std::filesystem::path& file, const ModelOptions& options);

}  // namespace replay
