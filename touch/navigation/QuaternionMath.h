// Small rotation helpers. Quaternions are single precision, the vectors given are double.
#pragma once

#include "host/dg/Location.h"
#include "host/dg/Quaternion.h"
#include "host/dg/Vec.h"

namespace touch {

// The rotation about an axis by an angle in radians, with w >= 0. The axis is not normalised: pass a unit vector.
[[nodiscard]] dg::Quaternion<float> QuaternionFromAxisAngle(const dg::DVec3& axis, double angle) noexcept;

// Turns a unit quaternion into its inverse. Another length gives the conjugate divided by that length; length 0 gives
// four quiet NaN.
void InvertQuaternion(dg::Quaternion<float>& q) noexcept;

// The shortest rotation that turns one unit vector onto another, with w >= 0; for opposite vectors a half turn about an
// axis perpendicular to them.
[[nodiscard]] dg::Quaternion<float> QuaternionFromTo(const dg::DVec3& from, const dg::DVec3& to) noexcept;

// The rotation a share t of the way from a to b along the shorter arc, with w >= 0. t is not clamped: beyond 1 it goes
// past b. Nearly equal rotations are blended linearly.
[[nodiscard]] dg::Quaternion<float> SlerpQuaternion(const dg::Quaternion<float>& a, const dg::Quaternion<float>& b,
                                                    float t) noexcept;

// Carries a rotation from a location's own frame into the world: its axis (x, y, z) is turned and keeps its length,
// w stays.
void RotateVectorByLocation(dg::Quaternion<float>& q, const dg::Location& location) noexcept;

}  // namespace touch
