// Rotation helpers of spin, pan, twist and coasting. The order of operations and the places where values are rounded to
// single precision are fixed: they decide the last bits of every camera. Tested by tests/unit/QuaternionMathTest.cpp.
#include "touch/navigation/QuaternionMath.h"

#include "host/dg/Functions.h"
#include "host/dg/Traits.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace touch {
namespace {

dg::Quaternion<float> WithPositiveW(const dg::Quaternion<float>& q) noexcept {
    return q.w < 0 ? dg::Quaternion<float>{-q.x, -q.y, -q.z, -q.w} : q;
}

dg::Quaternion<float> FromVectorAndScalar(const dg::DVec3& vector, double scalar) noexcept {
    return {static_cast<float>(vector.x), static_cast<float>(vector.y), static_cast<float>(vector.z),
            static_cast<float>(scalar)};
}

// An axis that is far enough from v to make a cross product with: a basis axis along one of v's smaller components.
dg::DVec3 AxisAwayFrom(const dg::DVec3& v) noexcept {
    const double x = std::abs(v.x);
    const double y = std::abs(v.y);
    const double z = std::abs(v.z);
    if (y > x) {
        return z > x ? dg::DVec3::X : dg::DVec3::Z;
    }
    return z > y ? dg::DVec3::Y : dg::DVec3::Z;
}

}  // namespace

dg::Quaternion<float> QuaternionFromAxisAngle(const dg::DVec3& axis, double angle) noexcept {
    return WithPositiveW(FromVectorAndScalar(axis * dg::Sin(angle / 2), dg::Cos(angle / 2)));
}

void InvertQuaternion(dg::Quaternion<float>& q) noexcept {
    const float length = std::sqrt(q.x * q.x + q.y * q.y + q.z * q.z + q.w * q.w);
    if (length == 0.0F) {
        constexpr float nan = std::numeric_limits<float>::quiet_NaN();
        q = {nan, nan, nan, nan};
        return;
    }
    q = {-q.x / length, -q.y / length, -q.z / length, q.w / length};
}

dg::Quaternion<float> QuaternionFromTo(const dg::DVec3& from, const dg::DVec3& to) noexcept {
    const dg::DVec3 cross = dg::CrossProduct(from, to);
    const double length = cross.Norm();
    const double dot = dg::DotProduct(from, to);
    if (length >= dg::Traits<double>::s_EPSILON) {
        const double sine = std::min(length, 1.0);
        double angle = dg::Asin(sine);
        if (dot < 0) {
            angle = std::numbers::pi - angle;
        }
        const double halfSine = dg::Sin(angle / 2);
        return WithPositiveW(FromVectorAndScalar(cross * (halfSine / sine), sine / (2 * halfSine)));
    }
    if (dot < 0) {
        dg::DVec3 axis = dg::CrossProduct(from, AxisAwayFrom(from));
        axis.Normalize();
        return FromVectorAndScalar(axis, 0.0);
    }
    return {};
}

dg::Quaternion<float> SlerpQuaternion(const dg::Quaternion<float>& a, const dg::Quaternion<float>& b,
                                      float t) noexcept {
    float dot = a.x * b.x + a.y * b.y + a.z * b.z + a.w * b.w;
    const bool opposite = dot < 0;
    if (opposite) {
        dot = -dot;
    }
    float weightA = 1 - t;
    float weightB = t;
    if (1 - dot >= dg::Traits<float>::s_EPSILON) {
        const float angle = dg::Acos(dot);
        const float sine = dg::Sin(angle);
        weightA = dg::Sin((1 - t) * angle) / sine;
        weightB = dg::Sin(t * angle) / sine;
    }
    if (opposite) {
        weightB = -weightB;
    }
    return WithPositiveW({weightA * a.x + weightB * b.x, weightA * a.y + weightB * b.y, weightA * a.z + weightB * b.z,
                          weightA * a.w + weightB * b.w});
}

void RotateVectorByLocation(dg::Quaternion<float>& q, const dg::Location& location) noexcept {
    dg::DVec3 vector{q.x, q.y, q.z};
    const double length = vector.Norm();
    vector *= location;
    vector.Normalize();
    vector *= length;
    q.x = static_cast<float>(vector.x);
    q.y = static_cast<float>(vector.y);
    q.z = static_cast<float>(vector.z);
}

}  // namespace touch
