// The two-finger pan and the multi-select drag. Pan decides nothing about the gesture, but its first frame takes the
// references of pan, zoom and twist, whatever the switches say; so it runs before the other two. An orthographic camera
// slides with the fingers, a perspective one turns in place after them. The drag passes one finger on as left-button
// messages for the host's selection tools. Tested by tests/component/PanDragTest.cpp.
#include "host/workflow/ConstStrings.h"
#include "touch/TouchWorkflow.h"
#include "touch/navigation/CameraMoves.h"

namespace touch {

using workflow::ConstStrings;

bool TouchWorkflow::ProcessPan() {
    if (m_fingerCountChanged) {
        StartPan();
        return true;
    }
    if (m_dontPan || m_frame.HasLift()) {
        return true;
    }
    if (m_orthographic) {
        PanOrthographic();
    } else if (!GetExploreEnabled()) {
        PanPerspective();
    }
    return true;
}

void TouchWorkflow::StartPan() {
    if (workflow::WorkflowManagerCore* manager = GetManagerCore()) {
        manager->StopTransition();
    }
    UpdateViewParameters();
    m_originalViewWidth = m_viewWidth;
    m_startGestureSpan = m_gestureSpan;
    m_lastZoomSpan = m_gestureSpan;
    m_startGestureAngle = m_lastGestureAngle;
    m_panAnchor = GetViewPlaneGestureCenter();
    if (!m_orthographic) {
        m_panAnchor.Normalize();
    }
}

// Turns from the previous ray to the current one, whole.
void TouchWorkflow::PanPerspective() {
    UpdateViewParameters();
    dg::DVec3 ray = GetViewPlaneGestureCenter();
    ray.Normalize();
    const dg::Quaternion<float> turn = QuaternionFromTo(m_panAnchor, ray);
    m_panAnchor = ray;
    ApplyGestureCamera(TurnInPlace(turn, m_cameraLocation));
}

void TouchWorkflow::PanOrthographic() {
    UpdateViewParameters();
    dg::Location location = m_cameraLocation;
    const dg::DVec3 point = GetViewPlaneGestureCenter();
    const dg::DVec3 previous = m_panAnchor == dg::DVec3::BAD ? point : m_panAnchor;
    const dg::DVec3 step = point - previous;
    const dg::DVec3 move = GetCameraU() * step.x + GetCameraV() * step.y;
    dg::DPoint3D position = location.GetPos();
    position -= move;
    location.SetPos(position);
    m_panAnchor = point;
    ApplyGestureCamera(location);
}

// No button-up is sent when the finger lifts: the lift only offers the touch to the taps.
bool TouchWorkflow::ProcessDrag() {
    const TouchState* finger = MatchSlot(m_firstFingerId);
    if (finger == nullptr) {
        return false;
    }
    if (finger->state == TSUp && !m_fingerCountChanged) {
        if (!ProcessTwoFingerTap()) {
            ProcessTap();
        }
        return true;
    }
    const PixelPosition position = GetPosition(*finger);
    if (finger->state == TSDown) {
        SendMouseMsg(ConstStrings::MsgMouseLeftDown, position.x, position.y);
        return true;
    }
    if (finger->state == TSMove) {
        SendMouseMsg(ConstStrings::MsgMouseLeftDrag, position.x, position.y);
        return true;
    }
    return false;
}

}  // namespace touch
