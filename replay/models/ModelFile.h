// 3D models from files.
#pragma once

#include "replay/files/WorkerProcess.h"
#include "scene/Model.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace replay {

enum class UpAxis { Y, Z };

struct ModelOptions {
    std::optional<UpAxis> up;    // the axis that is up in the file; no value: by the format
    bool anyReferences = false;  // whether the file may refer to files outside its folder
    WorkerLimits limits;
    std::function<void(const std::string&)> tellNote;  // gets a line about something that was left out
};

// Reads a model from an ordinary file of a format that is known, by the file's ending and content. Each mesh of each
// node becomes a part named after its node. The nodes' placements are applied, and a model of a format whose up axis is
// Y is turned to stand on the plane of X and Y; otherwise coordinates stay as they are, in the units of the file. The
// work is done by a child process with limits. Throws ReadError, one line, when there is no model to be had.
[[nodiscard]] std::shared_ptr<const scene::Model> LoadModelFile(const std::string& path,
                                                                const ModelOptions& options = {});

}  // namespace replay
