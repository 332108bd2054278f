// Rotations of row vectors, right-handed, in radians. Sines and cosines are the host library's own, so that a rotation
// has the same bits on every machine. An axis without a direction gives the identity.
#include "host/dg/Matrix.h"

#include "host/dg/Functions.h"

namespace dg {

DMat44 DMat44::RotationX(double angle) noexcept {
    const double c = Cos(angle);
    const double s = Sin(angle);
    DMat44 r;
    r.m[1][1] = c;
    r.m[1][2] = s;
    r.m[2][1] = -s;
    r.m[2][2] = c;
    return r;
}

DMat44 DMat44::Rotation(const DVec3& axis, double angle) noexcept {
    DVec3 a = axis;
    if (!a.Normalize()) {
        return {};
    }
    const double c = Cos(angle);
    const double s = Sin(angle);
    const double t = 1 - c;
    DMat44 r;
    r.m[0][0] = c + a.x * a.x * t;
    r.m[1][0] = a.x * a.y * t - a.z * s;
    r.m[2][0] = a.x * a.z * t + a.y * s;
    r.m[0][1] = a.y * a.x * t + a.z * s;
    r.m[1][1] = c + a.y * a.y * t;
    r.m[2][1] = a.y * a.z * t - a.x * s;
    r.m[0][2] = a.z * a.x * t - a.y * s;
    r.m[1][2] = a.z * a.y * t + a.x * s;
    r.m[2][2] = c + a.z * a.z * t;
    return r;
}

}  // namespace dg
