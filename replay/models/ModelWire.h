// Models as bytes, from one process to another of the same program.
#pragma once

#include "scene/Model.h"

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>

namespace replay {

// What a model may hold. More than a viewer of this kind can draw in a minute.
inline constexpr std::size_t MostModelParts = 100'000;
inline constexpr std::size_t MostModelVertices = 30'000'000;
inline constexpr std::size_t MostModelTriangles = 10'000'000;
// In model units, on each axis. Far enough from where numbers end that cameras and drawings are finite.
inline constexpr float LargestCoordinate = 1e12F;

// The bytes are no model that can be shown; what() says why, without naming a file.
class ModelFault : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// Names, colours, vertices (in single precision) and triangles of the parts; no edges.
[[nodiscard]] std::string EncodeModel(const scene::Model& model);

// The parts of a model out of bytes of any origin, with their sharp edges. Names are of printable UTF-8 and each
// once, with a number behind a name that is taken; colours are from 0 to 1. Throws ModelFault when a count, index or
// coordinate is not as it has to be, or there is no triangle.
[[nodiscard]] scene::Model DecodeModel(std::string_view bytes);

}  // namespace replay
