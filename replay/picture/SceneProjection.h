// From the world to the pixels of a picture, with depth.
#pragma once

#include "host/dg/Camera3D.h"
#include "host/dg/Point.h"
#include "host/dg/Vec.h"

#include <optional>

namespace replay {

// A point of a picture: x to the right and y down in pixels from the upper left corner, and a nearness that grows
// towards the eye and is linear along lines of the picture.
struct PicturePoint {
    double x = 0;
    double y = 0;
    double nearness = 0;
};

// The view of a camera in a picture of a given size, which takes the place of the camera's own viewport. Eye
// coordinates are x to the right, y up and z towards the viewer.
class SceneProjection {
public:
    // No value when nothing can be seen: a size of 0, an empty window, a perspective camera on its own view plane, or
    // a value that is not finite.
    [[nodiscard]] static std::optional<SceneProjection> Make(const dg::Camera3D& camera, int width, int height);

    [[nodiscard]] bool IsOrthographic() const noexcept { return m_orthographic; }
    // The largest z that a perspective camera sees; negative.
    [[nodiscard]] double GetNearZ() const noexcept { return m_nearZ; }

    [[nodiscard]] dg::DPoint3D ToEye(const dg::DPoint3D& world) const { return m_worldToEye.MapPoint(world); }
    [[nodiscard]] dg::DVec3 ToEye(const dg::DVec3& direction) const { return m_worldToEye.MapDirection(direction); }
    // For a perspective camera the point must not lie beyond GetNearZ.
    [[nodiscard]] PicturePoint ToPicture(const dg::DPoint3D& eye) const;
    // From a point towards the viewer, not normalised.
    [[nodiscard]] dg::DVec3 TowardsViewer(const dg::DPoint3D& eye) const;

private:
    SceneProjection() = default;

    dg::DMat44 m_worldToEye;
    bool m_orthographic = true;
    double m_viewPlane = -1;
    double m_nearZ = 0;
    double m_left = 0;
    double m_top = 0;
    double m_pixelsPerUnitX = 1;
    double m_pixelsPerUnitY = 1;
};

}  // namespace replay
