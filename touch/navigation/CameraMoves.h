// The two ways in which gestures turn a camera. Placements are in world units; turns are unit quaternions.
#pragma once

#include "host/dg/Location.h"
#include "host/dg/Matrix.h"
#include "touch/navigation/QuaternionMath.h"

namespace touch {

// A camera turned about a point of the world. The turn is given in the camera's own frame and is carried into the world
// on the way, where the caller finds it. The axes are made orthonormal again.
[[nodiscard]] inline dg::Location TurnAbout(const dg::DPoint3D& center, dg::Quaternion<float>& turn,
                                            const dg::Location& camera) {
    RotateVectorByLocation(turn, camera);
    dg::Location turned = camera * dg::DMat44::Rotation(center, turn);
    turned.Sanitize();
    return turned;
}

// A camera turned where it stands, in its own frame.
[[nodiscard]] inline dg::Location TurnInPlace(const dg::Quaternion<float>& turn, dg::Location camera) {
    camera.SetMat(dg::FMat33::Rotation(turn) * camera.GetMat());
    return camera;
}

}  // namespace touch
