// One finger on a 3D view: it spins the model about the spin centre, or, in explore navigation with a perspective
// camera, looks around. Decides when a touch has become a spin (the finger leaves its start), which is also where the
// trackballs begin, so that the model does not jump by the distance already travelled; and what a lift hands on: a tap,
// or a fast spin to coast. Tested by tests/component/SpinTest.cpp.
#include "host/dg/Functions.h"
#include "touch/TouchWorkflow.h"
#include "touch/markup/SpinCenterMarkup.h"
#include "touch/navigation/CameraMoves.h"
#include "touch/tracking/FingerMotion.h"

#include <cmath>

namespace touch {
namespace {

struct AxisAngle {
    dg::DVec3 axis;
    float angle;  // radians
};

AxisAngle ToAxisAngle(const dg::Quaternion<float>& q) {
    const float lengthSquared = q.x * q.x + q.y * q.y + q.z * q.z;
    if (!(lengthSquared > 0)) {
        return {dg::DVec3::X, 0};
    }
    const float length = std::sqrt(lengthSquared);
    return {{q.x / length, q.y / length, q.z / length}, 2 * dg::Acos(q.w)};
}

}  // namespace

bool TouchWorkflow::ProcessSpin() {
    TouchState* finger = MatchSlot(m_firstFingerId);
    if (finger == nullptr) {
        return false;
    }
    switch (finger->state) {
    case TSDown: return m_fingerCountChanged && StartSpin(finger->startX, finger->startY);
    case TSMove: return m_fingerCountChanged ? StartSpin(finger->currentX, finger->currentY) : MoveSpin(*finger);
    case TSUp: return !m_fingerCountChanged && ReleaseSpin(*finger);
    case TSNone: return false;
    }
    return false;
}

bool TouchWorkflow::StartSpin(int x, int y) {
    SingleFinger3DInitialize(x, y, false);
    m_lookRay = GetViewPlaneTouch3(x, y);
    m_lookRay.Normalize();
    return true;
}

void TouchWorkflow::SingleFinger3DInitialize(int x, int y, bool started) {
    if (!m_navigateMode || !started) {
        m_touchDownTime = m_currentTime;
        m_touchUpTime = 0;
    }
    if (!m_navigateMode) {
        return;
    }
    if (!started) {
        UpdateViewParameters();
        if (workflow::WorkflowManagerCore* manager = GetManagerCore()) {
            manager->StopTransition();
        }
    }
    m_frame.GetShapeView().GetSpinCenter(m_spinCenter);
    const dg::DVec2 middle = GetPixelCenter();
    const double radius = TrackballRadiusShare * (middle.x > middle.y ? middle.y : middle.x);
    const dg::DPoint3D point(x, y, 0);
    const dg::DPoint3D center(middle.x, middle.y, 0);
    for (Trackball* trackball : {&m_spinTrackball, &m_velocityTrackball}) {
        trackball->SetRadius(radius);
        trackball->BeginDrag(point, center, dg::DVec3::ZERO, false);
    }
}

bool TouchWorkflow::MoveSpin(TouchState& finger) {
    const int x = finger.currentX;
    const int y = finger.currentY;
    if (!m_navigateMode || x == 0 || y == 0) {
        return false;
    }
    if (!MarkIfMoving(finger, x, y)) {
        return false;
    }
    if (m_holdClickSent) {
        return false;
    }
    if (!m_viewChanged) {
        SingleFinger3DInitialize(x, y, true);
    }
    m_viewChanged = true;
    if (GetExploreEnabled() && !m_orthographic) {
        LookAround(x, y);
    } else {
        SpinTrackball(x, y);
    }
    return true;
}

// Turns the camera in place, from the current finger ray back toward the previous one.
void TouchWorkflow::LookAround(int x, int y) {
    dg::Camera3D camera;
    m_frame.GetShapeView().GetCamera(camera);
    dg::DVec3 ray = GetViewPlaneTouch3(x, y);
    ray.Normalize();
    const AxisAngle back = ToAxisAngle(QuaternionFromTo(ray, m_lookRay));
    const dg::Quaternion<float> turn = QuaternionFromAxisAngle(back.axis, LookAroundShare * back.angle);
    m_frame.GetShapeView().SetCameraLocation(TurnInPlace(turn, camera.GetLocation()));
    m_lookRay = ray;
}

// The camera turns by the inverse of the finger's rotation, so that the model follows the finger.
void TouchWorkflow::SpinTrackball(int x, int y) {
    dg::Quaternion<float> turn = m_spinTrackball.Drag(dg::DPoint3D(x, y, 0));
    InvertQuaternion(turn);
    dg::Camera3D camera;
    m_frame.GetShapeView().GetCamera(camera);
    m_frame.GetShapeView().SetCameraLocation(TurnAbout(m_spinCenter, turn, camera.GetLocation()));
    ShowSpinCenterMarkup();
}

void TouchWorkflow::ShowSpinCenterMarkup() {
    if (!m_spinCenterMarkup || m_spinCenterMarkupShown) {
        return;
    }
    // Held: whoever hears of the change may switch the markup off.
    const du::SmartPtr<SpinCenterMarkup> markup = m_spinCenterMarkup;
    markup->MoveSpinCenterMarkup(m_spinCenter);
    markup->NotifyContentChanged();
    m_frame.GetShapeView().AddMarkup(markup);
    m_spinCenterMarkupShown = true;
}

void TouchWorkflow::HideSpinCenterMarkup() {
    const du::SmartPtr<SpinCenterMarkup> markup = m_spinCenterMarkup;
    if (m_spinCenterMarkupShown && markup) {
        m_frame.GetShapeView().RemoveMarkup(markup);
    }
    m_spinCenterMarkupShown = false;
}

bool TouchWorkflow::ReleaseSpin(const TouchState& finger) {
    if (ProcessTwoFingerTap() || ProcessTap()) {
        return true;
    }
    if (m_navigateMode && m_spinInertia &&
        GetFingerIsMoving(m_firstFingerId, finger.currentX, finger.currentY, false) &&
        static_cast<double>(dg::Acos(m_spinVelocity.w)) > CoastThresholdRad &&
        (m_orthographic || !GetExploreEnabled())) {
        StartSpinAnimation();
    }
    HideSpinCenterMarkup();
    return true;
}

}  // namespace touch
