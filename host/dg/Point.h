// Points: places in the plane and in space.
#pragma once

#include "host/dg/Vec.h"

#include <limits>

namespace dg {

// A place in the plane, in view pixels: origin at the lower left corner of the view, y upward.
struct DPoint2D {
    double x = 0;
    double y = 0;

    static const DPoint2D BAD;  // a point without value; compares equal to itself

    constexpr DPoint2D() noexcept = default;
    constexpr DPoint2D(double px, double py) noexcept : x(px), y(py) {}

    friend constexpr bool operator==(const DPoint2D&, const DPoint2D&) = default;
};
inline constexpr DPoint2D DPoint2D::BAD{std::numeric_limits<double>::max(), std::numeric_limits<double>::max()};

// A place in space.
struct DPoint3D {
    double x = 0;
    double y = 0;
    double z = 0;

    static const DPoint3D ORIGIN;

    constexpr DPoint3D() noexcept = default;
    constexpr DPoint3D(double px, double py, double pz) noexcept : x(px), y(py), z(pz) {}
    explicit constexpr DPoint3D(const DVec3& v) noexcept : x(v.x), y(v.y), z(v.z) {}

    constexpr DPoint3D& operator+=(const DVec3& v) noexcept {
        x += v.x;
        y += v.y;
        z += v.z;
        return *this;
    }
    constexpr DPoint3D& operator-=(const DVec3& v) noexcept { return *this += -v; }
    // Carries the point from the location's own frame into the world. Defined in Location.h.
    constexpr DPoint3D& operator*=(const Location& location) noexcept;

    friend constexpr bool operator==(const DPoint3D&, const DPoint3D&) = default;
    friend constexpr DPoint3D operator+(DPoint3D p, const DVec3& v) noexcept { return p += v; }
    friend constexpr DVec3 operator-(const DPoint3D& a, const DPoint3D& b) noexcept {
        return {a.x - b.x, a.y - b.y, a.z - b.z};
    }
};
inline constexpr DPoint3D DPoint3D::ORIGIN{0, 0, 0};

}  // namespace dg
