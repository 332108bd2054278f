// The elementary functions that cameras are computed with.
//
// C libraries round them each in their own way, and some of them by the processor they run on. These are made of sums,
// products, quotients and square roots alone, which every machine rounds alike, so that a touch moves the camera by the
// same bits everywhere and a trace of one machine can be compared with that of another. Errors stay below two units
// in the last place, those of the inverse sine and cosine below three. NaN, infinities and signed zeros are answered as
// by a C library.
//
// The single-precision forms are computed in double precision and rounded once.
#pragma once

#include "host/HostApi.h"

namespace dg {

// Sine and cosine of an angle in radians. NaN for infinities and NaN. Beyond a million radians the angle is first
// reduced by whole turns of the double that is nearest to 2 pi.
[[nodiscard]] HOST_API double Sin(double angle) noexcept;
[[nodiscard]] HOST_API double Cos(double angle) noexcept;

// The direction of (x, y) in radians in [-pi, pi]; signed zeros count, as for std::atan2.
[[nodiscard]] HOST_API double Atan2(double y, double x) noexcept;

// The inverse sine in [-pi/2, pi/2] and cosine in [0, pi]; NaN outside [-1, 1].
[[nodiscard]] HOST_API double Asin(double value) noexcept;
[[nodiscard]] HOST_API double Acos(double value) noexcept;

// 2 to the power of an exponent, exact for whole ones; 0 or infinity beyond the range of a double.
[[nodiscard]] HOST_API double Exp2(double exponent) noexcept;

// 10 to the power of a whole exponent: the double nearest to it for exponents from -22 to 22.
[[nodiscard]] HOST_API double PowerOfTen(int exponent) noexcept;

[[nodiscard]] inline float Sin(float angle) noexcept {
    return static_cast<float>(Sin(static_cast<double>(angle)));
}
[[nodiscard]] inline float Cos(float angle) noexcept {
    return static_cast<float>(Cos(static_cast<double>(angle)));
}
[[nodiscard]] inline float Atan2(float y, float x) noexcept {
    return static_cast<float>(Atan2(static_cast<double>(y), static_cast<double>(x)));
}
[[nodiscard]] inline float Acos(float value) noexcept {
    return static_cast<float>(Acos(static_cast<double>(value)));
}

}  // namespace dg
