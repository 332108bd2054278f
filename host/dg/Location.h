// A rigid placement: an orthonormal right-handed frame and a position. See docs/CONVENTIONS.md.
#pragma once

#include "host/dg/Matrix.h"
#include "host/dg/Point.h"
#include "host/dg/Vec.h"

namespace dg {

// The frame axes U, V, W are single precision, the position is double. The default is the world frame at the origin.
// A camera at a location looks along -W, with U to the right and V up.
class Location {
public:
    constexpr Location() noexcept = default;
    constexpr Location(const FVec3& u, const FVec3& v, const FVec3& w, const DPoint3D& position) noexcept
        : m_orientation(u, v, w), m_position(position) {}

    [[nodiscard]] constexpr FVec3 GetU() const noexcept { return m_orientation.Row(0); }
    [[nodiscard]] constexpr FVec3 GetV() const noexcept { return m_orientation.Row(1); }
    [[nodiscard]] constexpr FVec3 GetW() const noexcept { return m_orientation.Row(2); }
    // The axes as the rows U, V, W.
    [[nodiscard]] constexpr const FMat33& GetMat() const noexcept { return m_orientation; }
    [[nodiscard]] constexpr const DPoint3D& GetPos() const noexcept { return m_position; }

    constexpr void SetPos(const DPoint3D& position) noexcept { m_position = position; }
    constexpr void SetMat(const FMat33& orientation) noexcept { m_orientation = orientation; }

    // Makes the frame orthonormal again: U normalised, V made perpendicular to U and normalised, W = U x V. Works in
    // double precision and rounds once. Axes that have no direction left (zero length) stay as they are.
    void Sanitize() noexcept {
        DVec3 u(GetU());
        DVec3 v(GetV());
        if (!u.Normalize()) {
            return;
        }
        v -= u * DotProduct(u, v);
        if (!v.Normalize()) {
            return;
        }
        SetAxis(0, u);
        SetAxis(1, v);
        SetAxis(2, CrossProduct(u, v));
    }

    // The matrix acts in the world: it turns the axes by its linear part and maps the position as a point.
    friend constexpr Location operator*(const Location& location, const DMat44& matrix) noexcept {
        Location r;
        for (int i = 0; i < 3; ++i) {
            r.SetAxis(i, matrix.MapDirection(DVec3(location.m_orientation.Row(i))));
        }
        r.m_position = matrix.MapPoint(location.m_position);
        return r;
    }

    // The matrix acts in the location's own frame, and the location carries the result into the world.
    friend constexpr Location operator*(const DMat44& matrix, const Location& location) noexcept {
        Location r;
        for (int i = 0; i < 3; ++i) {
            DVec3 axis{matrix.m[i][0], matrix.m[i][1], matrix.m[i][2]};
            axis *= location;
            r.SetAxis(i, axis);
        }
        DPoint3D position{matrix.m[3][0], matrix.m[3][1], matrix.m[3][2]};
        position *= location;
        r.m_position = position;
        return r;
    }

    friend constexpr bool operator==(const Location&, const Location&) = default;

private:
    constexpr void SetAxis(int i, const DVec3& axis) noexcept {
        m_orientation.m[i][0] = static_cast<float>(axis.x);
        m_orientation.m[i][1] = static_cast<float>(axis.y);
        m_orientation.m[i][2] = static_cast<float>(axis.z);
    }

    FMat33 m_orientation;
    DPoint3D m_position;
};

constexpr DVec3& DVec3::operator*=(const Location& location) noexcept {
    const float(&m)[3][3] = location.GetMat().m;
    return *this = {m[0][0] * x + m[1][0] * y + m[2][0] * z, m[0][1] * x + m[1][1] * y + m[2][1] * z,
                    m[0][2] * x + m[1][2] * y + m[2][2] * z};
}

constexpr DPoint3D& DPoint3D::operator*=(const Location& location) noexcept {
    DVec3 d{x, y, z};
    d *= location;
    return *this = location.GetPos() + d;
}

}  // namespace dg
