// A model as the lines of a technical drawing.
#pragma once

#include "host/dg/Location.h"
#include "host/dg/Point.h"
#include "scene/Model.h"

#include <vector>

namespace scene {

// A line on the UV plane of the projection, in model units.
struct ProjectedLine {
    dg::DPoint2D from;
    dg::DPoint2D to;
    bool hidden = false;  // behind a surface
};

// The edges and outlines of a model seen along -W of a frame, projected in parallel, cut where they pass behind
// surfaces. The cost is the number of edges times the number of triangles: for models of a few thousand.
[[nodiscard]] std::vector<ProjectedLine> ProjectEdges(const Model& model, const dg::Location& frame);

}  // namespace scene
