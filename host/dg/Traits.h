// Numeric tolerances shared by the geometry types.
#pragma once

#include <limits>

namespace dg {

// The relative rounding unit of T: the distance from 1 to the next representable value.
template <class T>
struct Traits {
    static constexpr T s_EPSILON = std::numeric_limits<T>::epsilon();
};

}  // namespace dg
