// Closed solids that parts are built from.
#pragma once

#include "host/dg/Location.h"
#include "scene/Model.h"
#include "scene/Polygon.h"

#include <vector>

namespace scene {

// Each operation adds one closed solid, with its outside outside, to the triangles of a part and leaves the edges
// alone.

// A box between two corners; the first must be the lower on every axis.
void AddBox(Part& part, const dg::DPoint3D& low, const dg::DPoint3D& high);

// The area inside an outline and outside its holes, in the UV plane of the placement, drawn out along W by a positive
// depth. The loops may run either way round. Throws std::invalid_argument as TriangulatePolygon does.
void AddExtrusion(Part& part, const Loop& outline, const std::vector<Loop>& holes, const dg::Location& placement,
                  double depth);

// A profile turned about the W axis of the placement. Its points have the place along W as x and the distance from the
// axis, 0 or more, as y; it must run counter-clockwise. Neighbouring points on the axis close the solid there.
void AddRevolution(Part& part, const Loop& profile, const dg::Location& placement, int segments);

}  // namespace scene
