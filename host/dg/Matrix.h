// Matrices. FMat33 and DMat44 act on row vectors (p' = p M); DMat33 multiplies column vectors. See docs/CONVENTIONS.md.
#pragma once

#include "host/HostApi.h"
#include "host/dg/Box.h"
#include "host/dg/Point.h"
#include "host/dg/Quaternion.h"
#include "host/dg/Vec.h"

namespace dg {

// A single-precision 3x3 matrix of rows. As an orientation its rows are the axes U, V, W. The default is the identity.
class FMat33 {
public:
    float m[3][3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};

    constexpr FMat33() noexcept = default;
    constexpr FMat33(const FVec3& u, const FVec3& v, const FVec3& w) noexcept
        : m{{u.x, u.y, u.z}, {v.x, v.y, v.z}, {w.x, w.y, w.z}} {}

    // The usual matrix of q: times a column vector it turns that by q. q is not normalised first: a q that is no unit
    // quaternion also scales.
    [[nodiscard]] static constexpr FMat33 Rotation(const Quaternion<float>& q) noexcept {
        FMat33 r;
        r.m[0][0] = 1 - 2 * (q.y * q.y + q.z * q.z);
        r.m[0][1] = 2 * (q.x * q.y - q.w * q.z);
        r.m[0][2] = 2 * (q.x * q.z + q.w * q.y);
        r.m[1][0] = 2 * (q.x * q.y + q.w * q.z);
        r.m[1][1] = 1 - 2 * (q.x * q.x + q.z * q.z);
        r.m[1][2] = 2 * (q.y * q.z - q.w * q.x);
        r.m[2][0] = 2 * (q.x * q.z - q.w * q.y);
        r.m[2][1] = 2 * (q.y * q.z + q.w * q.x);
        r.m[2][2] = 1 - 2 * (q.x * q.x + q.y * q.y);
        return r;
    }

    [[nodiscard]] constexpr FVec3 Row(int i) const noexcept { return {m[i][0], m[i][1], m[i][2]}; }

    // The ordinary matrix product. An orientation holds its axes as rows, so Rotation(q) * orientation carries what
    // stood at the direction d of the camera's frame to the direction d turned by q: content follows the rays.
    friend constexpr FMat33 operator*(const FMat33& a, const FMat33& b) noexcept {
        FMat33 r;
        for (int i = 0; i < 3; ++i) {
            for (int j = 0; j < 3; ++j) {
                r.m[i][j] = a.m[i][0] * b.m[0][j] + a.m[i][1] * b.m[1][j] + a.m[i][2] * b.m[2][j];
            }
        }
        return r;
    }
    friend constexpr bool operator==(const FMat33&, const FMat33&) = default;
};

// A double-precision 3x3 matrix that multiplies column vectors. The default is the identity.
class DMat33 {
public:
    double m[3][3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};

    constexpr DMat33() noexcept = default;
    explicit constexpr DMat33(const FMat33& f) noexcept
        : m{{f.m[0][0], f.m[0][1], f.m[0][2]}, {f.m[1][0], f.m[1][1], f.m[1][2]}, {f.m[2][0], f.m[2][1], f.m[2][2]}} {}

    // Component i is row i times the vector. An orientation times a world vector gives its coordinates in the frame.
    friend constexpr DVec3 operator*(const DMat33& a, const DVec3& v) noexcept {
        return {a.m[0][0] * v.x + a.m[0][1] * v.y + a.m[0][2] * v.z,
                a.m[1][0] * v.x + a.m[1][1] * v.y + a.m[1][2] * v.z,
                a.m[2][0] * v.x + a.m[2][1] * v.y + a.m[2][2] * v.z};
    }
    friend constexpr bool operator==(const DMat33&, const DMat33&) = default;
};

// A double-precision affine map of row vectors: (x y z 1) M; the last row is the translation and the last column is
// always 0 0 0 1. The default is the identity.
class DMat44 {
public:
    double m[4][4] = {{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}};

    constexpr DMat44() noexcept = default;

    // The product a b: a acts first.
    constexpr DMat44(const DMat44& a, const DMat44& b) noexcept {
        for (int i = 0; i < 4; ++i) {
            for (int j = 0; j < 3; ++j) {
                m[i][j] = a.m[i][0] * b.m[0][j] + a.m[i][1] * b.m[1][j] + a.m[i][2] * b.m[2][j];
            }
        }
        for (int j = 0; j < 3; ++j) {
            m[3][j] += b.m[3][j];
        }
    }

    [[nodiscard]] static constexpr DMat44 Translation(const DVec3& t) noexcept {
        DMat44 r;
        r.m[3][0] = t.x;
        r.m[3][1] = t.y;
        r.m[3][2] = t.z;
        return r;
    }

    // Right-handed rotation by an angle in radians about the X axis through the origin.
    [[nodiscard]] HOST_API static DMat44 RotationX(double angle) noexcept;

    // Right-handed rotation by an angle in radians about an axis through the origin. The axis may have any length;
    // a zero axis gives the identity.
    [[nodiscard]] HOST_API static DMat44 Rotation(const DVec3& axis, double angle) noexcept;

    // Rotation by q about a centre. q is not normalised first.
    [[nodiscard]] static constexpr DMat44 Rotation(const DPoint3D& centre, const Quaternion<float>& q) noexcept {
        const double x = q.x;
        const double y = q.y;
        const double z = q.z;
        const double w = q.w;
        DMat44 r;
        r.m[0][0] = 1 - 2 * (y * y + z * z);
        r.m[1][0] = 2 * (x * y - w * z);
        r.m[2][0] = 2 * (x * z + w * y);
        r.m[0][1] = 2 * (x * y + w * z);
        r.m[1][1] = 1 - 2 * (x * x + z * z);
        r.m[2][1] = 2 * (y * z - w * x);
        r.m[0][2] = 2 * (x * z - w * y);
        r.m[1][2] = 2 * (y * z + w * x);
        r.m[2][2] = 1 - 2 * (x * x + y * y);
        const DVec3 turned = r.MapDirection({centre.x, centre.y, centre.z});
        r.m[3][0] = centre.x - turned.x;
        r.m[3][1] = centre.y - turned.y;
        r.m[3][2] = centre.z - turned.z;
        return r;
    }

    // d M without the translation.
    [[nodiscard]] constexpr DVec3 MapDirection(const DVec3& d) const noexcept {
        return {d.x * m[0][0] + d.y * m[1][0] + d.z * m[2][0], d.x * m[0][1] + d.y * m[1][1] + d.z * m[2][1],
                d.x * m[0][2] + d.y * m[1][2] + d.z * m[2][2]};
    }
    // p M.
    [[nodiscard]] constexpr DPoint3D MapPoint(const DPoint3D& p) const noexcept {
        return {p.x * m[0][0] + p.y * m[1][0] + p.z * m[2][0] + m[3][0],
                p.x * m[0][1] + p.y * m[1][1] + p.z * m[2][1] + m[3][1],
                p.x * m[0][2] + p.y * m[1][2] + p.z * m[2][2] + m[3][2]};
    }

    friend constexpr bool operator==(const DMat44&, const DMat44&) = default;
};

constexpr DBox& DBox::operator*=(const DMat44& matrix) noexcept {
    if (IsEmpty()) {
        return *this;
    }
    DBox mapped;
    for (int corner = 0; corner < 8; ++corner) {
        const bool highX = (corner & 1) != 0;
        const bool highY = (corner & 2) != 0;
        const bool highZ = (corner & 4) != 0;
        mapped.Enclose(matrix.MapPoint({highX ? max.x : min.x, highY ? max.y : min.y, highZ ? max.z : min.z}));
    }
    return *this = mapped;
}

}  // namespace dg
