// Comparing geometry with a tolerance, with the difference printed.
#pragma once

#include "host/dg/Location.h"
#include "host/dg/Point.h"
#include "host/dg/Quaternion.h"
#include "host/dg/Vec.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <vector>

namespace tests {

using Numbers = std::vector<double>;

inline Numbers ToNumbers(const dg::DVec2& v) {
    return {v.x, v.y};
}
inline Numbers ToNumbers(const dg::DVec3& v) {
    return {v.x, v.y, v.z};
}
inline Numbers ToNumbers(const dg::FVec3& v) {
    return {v.x, v.y, v.z};
}
inline Numbers ToNumbers(const dg::DPoint2D& p) {
    return {p.x, p.y};
}
inline Numbers ToNumbers(const dg::DPoint3D& p) {
    return {p.x, p.y, p.z};
}
inline Numbers ToNumbers(const dg::Quaternion<float>& q) {
    return {q.x, q.y, q.z, q.w};
}
// U, V, W and the position.
inline Numbers ToNumbers(const dg::Location& location) {
    Numbers numbers;
    for (const dg::FVec3& axis : {location.GetU(), location.GetV(), location.GetW()}) {
        numbers.insert(numbers.end(), {axis.x, axis.y, axis.z});
    }
    const dg::DPoint3D& position = location.GetPos();
    numbers.insert(numbers.end(), {position.x, position.y, position.z});
    return numbers;
}

// Whether two values of the same kind differ by at most a tolerance in every number; says which numbers do not. NaN is
// near nothing.
template <class Actual, class Expected>
testing::AssertionResult AreNear(const Actual& actual, const Expected& expected, double tolerance) {
    const Numbers a = ToNumbers(actual);
    const Numbers e = ToNumbers(expected);
    if (a.size() != e.size()) {
        return testing::AssertionFailure() << a.size() << " numbers where " << e.size() << " are expected";
    }
    testing::AssertionResult different = testing::AssertionFailure();
    bool near = true;
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (!(std::abs(a[i] - e[i]) <= tolerance)) {
            different << "\n  number " << i << ": " << a[i] << ", expected " << e[i] << ", difference " << a[i] - e[i];
            near = false;
        }
    }
    return near ? testing::AssertionSuccess() : different;
}

}  // namespace tests
