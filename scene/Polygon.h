// Plane outlines and their triangulation.
#pragma once

#include "host/dg/Point.h"
#include "scene/Model.h"

#include <vector>

namespace scene {

// A closed line of points, the last joined to the first, that does not cross itself.
using Loop = std::vector<dg::DPoint2D>;

// Counter-clockwise loops. A radius or an extent must be positive.
[[nodiscard]] Loop MakeRectangle(double left, double bottom, double right, double top);
[[nodiscard]] Loop MakeCircle(const dg::DPoint2D& center, double radius, int segments);

// The enclosed area, positive for a counter-clockwise loop.
[[nodiscard]] double GetSignedArea(const Loop& loop);

// Cuts the area inside an outline and outside its holes into counter-clockwise triangles that use every point and no
// others. The outline must run counter-clockwise and the holes clockwise; they must not touch each other. The indices
// count the outline's points first, then those of each hole. Throws std::invalid_argument for loops that cannot be cut.
[[nodiscard]] std::vector<Triangle> TriangulatePolygon(const Loop& outline, const std::vector<Loop>& holes);

}  // namespace scene
