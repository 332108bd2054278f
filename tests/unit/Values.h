// Geometry values as arrays of numbers, which GoogleTest prints and compares.
#pragma once

#include "host/dg/Location.h"
#include "host/dg/Matrix.h"
#include "host/dg/Point.h"
#include "host/dg/Quaternion.h"
#include "host/dg/Vec.h"

#include <gmock/gmock.h>

#include <array>
#include <cstddef>

namespace values {

using Three = std::array<double, 3>;
using Four = std::array<double, 4>;

inline Three Of(const dg::DVec3& v) {
    return {v.x, v.y, v.z};
}
inline Three Of(const dg::FVec3& v) {
    return {v.x, v.y, v.z};
}
inline Three Of(const dg::DPoint3D& p) {
    return {p.x, p.y, p.z};
}
inline Four Of(const dg::Quaternion<float>& q) {
    return {q.x, q.y, q.z, q.w};
}
// The rows, one below the other.
inline std::array<Three, 3> Of(const dg::FMat33& a) {
    return {Of(a.Row(0)), Of(a.Row(1)), Of(a.Row(2))};
}
// The axes and the position.
inline std::array<Three, 4> Of(const dg::Location& location) {
    return {Of(location.GetU()), Of(location.GetV()), Of(location.GetW()), Of(location.GetPos())};
}

// Compares number by number.
template <std::size_t Size>
auto Near(const std::array<double, Size>& expected, double tolerance) {
    return testing::Pointwise(testing::DoubleNear(tolerance), expected);
}

}  // namespace values
