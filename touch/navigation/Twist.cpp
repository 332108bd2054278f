// The twist: fingers turning about their centre turn the model about the view axis through the point under that centre.
// The step is the raw difference of two directions; across the fold at a full turn it is off by a whole turn, which is
// the same rotation. Tested by tests/component/TwistTest.cpp.
#include "touch/TouchWorkflow.h"
#include "touch/navigation/CameraMoves.h"

namespace touch {

bool TouchWorkflow::ProcessRotation() {
    if (m_fingerCountChanged || !m_rotationStarted || m_frame.HasLift()) {
        return false;
    }
    if (!m_orthographic && GetExploreEnabled()) {
        return false;
    }
    UpdateViewParameters();
    const double step = m_gestureAngle - m_lastGestureAngle;
    if (m_dontSpin || step == 0) {
        return true;
    }
    dg::Quaternion<float> turn = QuaternionFromAxisAngle(dg::DVec3::Z, step);
    InvertQuaternion(turn);
    dg::DPoint3D center(GetViewPlaneGestureCenter());
    center *= m_cameraLocation;
    ApplyGestureCamera(TurnAbout(center, turn, m_cameraLocation));
    m_lastGestureAngle = m_gestureAngle;
    return true;
}

}  // namespace touch
