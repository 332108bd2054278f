// Quaternions. The unit quaternion q turns a vector v into q v q*.
#pragma once

namespace dg {

// x, y, z is the vector part, w the scalar part. The default is the identity rotation.
template <class T>
struct Quaternion {
    T x = 0;
    T y = 0;
    T z = 0;
    T w = 1;

    friend constexpr bool operator==(const Quaternion&, const Quaternion&) = default;
};

}  // namespace dg
