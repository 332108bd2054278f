// A virtual trackball: finger positions in pixels to rotations.
#pragma once

#include "host/dg/Point.h"
#include "host/dg/Quaternion.h"
#include "host/dg/Vec.h"

#include <cstdint>

namespace touch {

// A sphere over the middle of the view. Points are projected onto it, points outside onto its rim, and the rotation
// between two successive projections is one step. A plain value; call SetRadius, then BeginDrag, then Drag for every
// new position.
struct Trackball {
    static constexpr std::int32_t CenterWeighted = 0;
    static constexpr std::int32_t Plain = 1;

    std::int32_t mode = Plain;
    double gain = 1.0;         // multiplies the angle in CenterWeighted mode
    double radius = 1.0;       // pixels
    bool constrained = false;  // whether projections are kept in the plane perpendicular to the axis
    dg::DVec3 axis = dg::DVec3::Z;
    dg::DPoint3D center = dg::DPoint3D::ORIGIN;  // pixels, z = 0
    dg::DVec3 lastVector = dg::DVec3::ZERO;      // the projection of the previous BeginDrag or Drag

    constexpr void SetMode(std::int32_t value) noexcept { mode = value; }
    constexpr void SetGain(double value) noexcept { gain = value; }
    // Pixels. A radius of 0 gives projections that are not finite, and identity steps or steps that are not finite.
    constexpr void SetRadius(double value) noexcept { radius = value; }

    // Starts a drag at a point about a centre and answers the point's projection.
    dg::DVec3 BeginDrag(const dg::DPoint3D& point, const dg::DPoint3D& dragCenter, const dg::DVec3& constraintAxis,
                        bool isConstrained) noexcept;
    // The point on the unit sphere above a pixel; z = 0 on the rim. A constrained projection that has no direction left
    // is the zero vector.
    [[nodiscard]] dg::DVec3 ProjectToSphere(const dg::DPoint3D& point) const noexcept;
    // The rotation from the previous position to this one, in the trackball's frame: x and y along the pixel axes, z
    // out of the screen. The identity when one of the two has no projection.
    dg::Quaternion<float> Drag(const dg::DPoint3D& point) noexcept;

    friend constexpr bool operator==(const Trackball&, const Trackball&) = default;
};

}  // namespace touch
