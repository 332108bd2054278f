// Vectors: directions and displacements without a place. See docs/CONVENTIONS.md for axes and product orders.
#pragma once

#include "host/dg/Functions.h"

#include <cmath>
#include <limits>

namespace dg {

class Location;

// A vector in the plane: pixels, or view-plane units.
struct DVec2 {
    double x = 0;
    double y = 0;

    static const DVec2 ZERO;

    friend constexpr bool operator==(const DVec2&, const DVec2&) = default;
};
inline constexpr DVec2 DVec2::ZERO{0, 0};

// A single-precision vector, as the axes of a Location are stored.
struct FVec3 {
    float x = 0;
    float y = 0;
    float z = 0;

    friend constexpr bool operator==(const FVec3&, const FVec3&) = default;
};

// A double-precision vector.
struct DVec3 {
    double x = 0;
    double y = 0;
    double z = 0;

    static const DVec3 X;
    static const DVec3 Y;
    static const DVec3 Z;
    static const DVec3 ZERO;
    static const DVec3 BAD;  // a vector without value; compares equal to itself

    constexpr DVec3() noexcept = default;
    constexpr DVec3(double px, double py, double pz) noexcept : x(px), y(py), z(pz) {}
    explicit constexpr DVec3(const FVec3& v) noexcept : x(v.x), y(v.y), z(v.z) {}

    constexpr DVec3& operator+=(const DVec3& o) noexcept {
        x += o.x;
        y += o.y;
        z += o.z;
        return *this;
    }
    constexpr DVec3& operator-=(const DVec3& o) noexcept {
        x -= o.x;
        y -= o.y;
        z -= o.z;
        return *this;
    }
    constexpr DVec3& operator*=(double factor) noexcept {
        x *= factor;
        y *= factor;
        z *= factor;
        return *this;
    }
    // Carries the vector, as a direction, from the location's own frame into the world. Defined in Location.h.
    constexpr DVec3& operator*=(const Location& location) noexcept;

    // Takes the value of a single-precision vector; widening is exact.
    constexpr void Set(const FVec3& v) noexcept {
        x = v.x;
        y = v.y;
        z = v.z;
    }

    [[nodiscard]] constexpr double NormSquared() const noexcept { return x * x + y * y + z * z; }
    [[nodiscard]] double Norm() const noexcept { return std::sqrt(NormSquared()); }

    // Scales to unit length. A zero vector stays as it is and the answer is false.
    bool Normalize() noexcept {
        const double norm = Norm();
        if (norm == 0.0) {
            return false;
        }
        x /= norm;
        y /= norm;
        z /= norm;
        return true;
    }

    friend constexpr bool operator==(const DVec3&, const DVec3&) = default;
    friend constexpr DVec3 operator+(DVec3 a, const DVec3& b) noexcept { return a += b; }
    friend constexpr DVec3 operator-(DVec3 a, const DVec3& b) noexcept { return a -= b; }
    friend constexpr DVec3 operator*(DVec3 a, double factor) noexcept { return a *= factor; }
    friend constexpr DVec3 operator-(const DVec3& a) noexcept { return {-a.x, -a.y, -a.z}; }
};
inline constexpr DVec3 DVec3::X{1, 0, 0};
inline constexpr DVec3 DVec3::Y{0, 1, 0};
inline constexpr DVec3 DVec3::Z{0, 0, 1};
inline constexpr DVec3 DVec3::ZERO{0, 0, 0};
inline constexpr DVec3 DVec3::BAD{std::numeric_limits<double>::max(), std::numeric_limits<double>::max(),
                                  std::numeric_limits<double>::max()};

[[nodiscard]] constexpr double DotProduct(const DVec3& a, const DVec3& b) noexcept {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

[[nodiscard]] constexpr DVec3 CrossProduct(const DVec3& a, const DVec3& b) noexcept {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

// The angle between two vectors of any length, in radians in [0, pi]. A zero vector gives 0.
[[nodiscard]] inline double Angle(const DVec3& a, const DVec3& b) noexcept {
    return Atan2(CrossProduct(a, b).Norm(), DotProduct(a, b));
}

}  // namespace dg
