// What a 3D view shows: parts of triangles and edges, without any drawing.
#pragma once

#include "host/dg/Box.h"
#include "host/dg/Color.h"
#include "host/dg/Point.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace scene {

// A triangle as three indices into the part's vertices, counter-clockwise seen from outside.
using Triangle = std::array<std::uint32_t, 3>;
// A line to be drawn, as two indices into the part's vertices.
using Edge = std::array<std::uint32_t, 2>;

// One selectable part.
struct Part {
    std::string name;
    dg::Color color;
    std::vector<dg::DPoint3D> vertices;  // world units
    std::vector<Triangle> triangles;
    std::vector<Edge> edges;  // the sharp edges and borders that give the part its shape
};

struct Model {
    std::string name;
    std::vector<Part> parts;

    // The box of all vertices; empty for a model without vertices.
    [[nodiscard]] dg::DBox GetBounds() const;
};

}  // namespace scene
