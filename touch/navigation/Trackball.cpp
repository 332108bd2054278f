// The virtual trackball. Decides how far a finger's step on the screen turns the model: about one radian per radius of
// travel near the centre, a turn about the view axis along the rim. The velocity trackball turns faster near the
// centre, by a factor that falls with the cosine of the distance. Tested by tests/unit/TrackballTest.cpp.
#include "touch/navigation/Trackball.h"

#include "host/dg/Functions.h"
#include "host/dg/Traits.h"
#include "touch/Thresholds.h"
#include "touch/navigation/QuaternionMath.h"

#include <cmath>

namespace touch {
namespace {

// Scales the angle of q by a factor, about its own axis. A rotation too small to have an axis becomes the identity.
dg::Quaternion<float> ScaleAngle(const dg::Quaternion<float>& q, float factor) noexcept {
    const float sine = std::sqrt(q.x * q.x + q.y * q.y + q.z * q.z);
    if (sine < dg::Traits<float>::s_EPSILON) {
        return {};
    }
    const float half = factor * dg::Atan2(sine, q.w);
    const float scaled = dg::Sin(half);
    return {q.x / sine * scaled, q.y / sine * scaled, q.z / sine * scaled, dg::Cos(half)};
}

}  // namespace

dg::DVec3 Trackball::BeginDrag(const dg::DPoint3D& point, const dg::DPoint3D& dragCenter,
                               const dg::DVec3& constraintAxis, bool isConstrained) noexcept {
    center = dragCenter;
    constrained = isConstrained;
    axis = constraintAxis;
    lastVector = ProjectToSphere(point);
    return lastVector;
}

dg::DVec3 Trackball::ProjectToSphere(const dg::DPoint3D& point) const noexcept {
    dg::DVec3 projected = point - center;
    projected *= 1.0 / radius;
    const double rhoSquared = projected.x * projected.x + projected.y * projected.y;
    if (rhoSquared <= 1.0) {
        projected.z = std::sqrt(1.0 - rhoSquared);
    } else {
        const double rho = std::sqrt(rhoSquared);
        projected = {projected.x / rho, projected.y / rho, 0.0};
    }
    if (constrained) {
        projected -= axis * dg::DotProduct(axis, projected);
        if (!projected.Normalize()) {
            projected = dg::DVec3::ZERO;
        }
    }
    return projected;
}

dg::Quaternion<float> Trackball::Drag(const dg::DPoint3D& point) noexcept {
    const dg::DVec3 projected = ProjectToSphere(point);
    dg::Quaternion<float> step;
    if (lastVector.NormSquared() > TrackballMinNormSquared && projected.NormSquared() > TrackballMinNormSquared) {
        step = QuaternionFromTo(lastVector, projected);
        const double rho = std::sqrt(projected.x * projected.x + projected.y * projected.y);
        if (mode == CenterWeighted && rho < 1.0) {
            step = ScaleAngle(step, static_cast<float>(dg::Cos(rho) * gain));
        }
    }
    lastVector = projected;
    return step;
}

}  // namespace touch
