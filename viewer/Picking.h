// Between pixels and the model: what lies under a pixel, and where a point of the model is seen. Pixels have their
// origin at the lower left corner of the view, y upward; pixel 0 is the left or lower edge of the projection window.
#pragma once

#include "host/dg/Camera3D.h"
#include "host/dg/Point.h"
#include "scene/Model.h"
#include "viewer/ViewSnapshot.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace viewer {

// A half line; a whole line for an orthographic camera.
struct Ray {
    dg::DPoint3D origin;  // world
    dg::DVec3 direction;  // not normalised
};

// The line of sight through a pixel: from the eye for a perspective camera, from the plane through the eye for an
// orthographic one. No value for a view without pixels.
[[nodiscard]] std::optional<Ray> MakeRay(const dg::Camera3D& camera, double x, double y);

// The pixel at which a world point is seen, also outside the view. No value for a view without pixels or an empty
// window, and for a point that is not in front of a perspective camera.
[[nodiscard]] std::optional<dg::DPoint2D> ProjectPoint(const dg::Camera3D& camera, const dg::DPoint3D& point);

// The index of the part that is nearest to the viewer at a pixel; triangles are seen from both sides. A perspective
// camera sees what is in front of it. An orthographic one has no place in depth: it sees everything, along the whole
// line.
[[nodiscard]] std::optional<std::size_t> PickPart(const dg::Camera3D& camera, const scene::Model& model, double x,
                                                  double y);

// The parts all of whose vertices are seen inside a rectangle or on its edge, in the order of the model. A part without
// vertices is never inside.
[[nodiscard]] std::vector<std::size_t> FindPartsInside(const dg::Camera3D& camera, const scene::Model& model,
                                                       const RubberBand& band);

}  // namespace viewer
