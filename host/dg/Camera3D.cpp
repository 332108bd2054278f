// The placement's axes become columns, which inverts a rotation, and the last row carries the eye to the origin.
// Products are taken in double precision.
#include "host/dg/Camera3D.h"

namespace dg {

DMat44 Camera3D::GetWorldToEye() const noexcept {
    const float(&axes)[3][3] = m_location.GetMat().m;
    const DPoint3D& eye = m_location.GetPos();
    DMat44 r;
    for (int axis = 0; axis < 3; ++axis) {
        for (int i = 0; i < 3; ++i) {
            r.m[i][axis] = axes[axis][i];
        }
        r.m[3][axis] = -(eye.x * axes[axis][0] + eye.y * axes[axis][1] + eye.z * axes[axis][2]);
    }
    return r;
}

}  // namespace dg
