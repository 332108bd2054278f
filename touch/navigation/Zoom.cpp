// Pinch zoom and explore flight. An orthographic view changes its width by a power of two of the span's change since
// the gesture started; a perspective camera travels along the ray through the fingers by the square of the span's
// change since the last frame, so that a quick pinch goes further. In explore navigation the hands steer a flight
// instead, which goes on for as long as they are held off their start. Tested by tests/component/ZoomTest.cpp.
#include "host/dg/Conversion.h"
#include "touch/TouchWorkflow.h"
#include "touch/navigation/PinchLaws.h"

namespace touch {

bool TouchWorkflow::ProcessZoom() {
    if (m_dontZoom || m_frame.HasLift()) {
        return false;
    }
    const bool explore = !m_orthographic && GetExploreEnabled();
    if (m_fingerCountChanged) {
        return explore && StartExplore();
    }
    if (m_orthographic) {
        if (!m_zoomStarted) {
            return false;
        }
        const std::int32_t delta =
            dg::WrapSubtract(dg::TruncateToInt32(m_gestureSpan), dg::TruncateToInt32(m_startGestureSpan));
        ZoomOrthographicView(1 / OrthographicDragZoom(delta));
        m_viewChanged = true;
        return true;
    }
    if (explore) {
        UpdateViewParameters();
        return m_twoHandsExplore ? FlyTwoHands() : FlyOneHand();
    }
    return m_zoomStarted && ZoomPerspective();
}

bool TouchWorkflow::StartExplore() {
    if (m_exploreStarted || (m_twoHandsExplore && (m_leftHandList.empty() || m_rightHandList.empty()))) {
        return false;
    }
    UpdateViewParameters();
    RequestBounds();
    if (m_twoHandsExplore) {
        m_exploreLeftStart = m_leftHandCenter;
        m_exploreRightStart = m_rightHandCenter;
    } else {
        m_exploreCenterStart = m_gestureCenter;
    }
    m_exploreUp = GetCameraV();
    m_exploreStarted = true;
    return true;
}

// The ray is taken for a view plane at distance 1, whatever the camera's own distance.
bool TouchWorkflow::ZoomPerspective() {
    UpdateViewParameters();
    m_zoomStep = m_worldDistance * PerspectiveStepScale;
    const double travel = PerspectivePinchZoom(m_gestureSpan - m_lastZoomSpan);
    const dg::DVec2 center =
        GetViewPlaneTouch(dg::TruncateToInt32(m_gestureCenter.x), dg::TruncateToInt32(m_gestureCenter.y));
    const dg::DVec3 ray = GetCameraU() * center.x + GetCameraV() * center.y - GetCameraW();
    dg::Location location = m_cameraLocation;
    location.SetPos(location.GetPos() + ray * travel);
    ApplyGestureCamera(location);
    m_lastZoomSpan = m_gestureSpan;
    return true;
}

bool TouchWorkflow::FlyOneHand() {
    if (!m_zoomStarted || !m_exploreStarted) {
        return false;
    }
    m_zoomStep = m_worldDistance * ExploreStepScale;
    // The whole pinch since its onset: fingers held apart keep flying.
    const double travel = PerspectivePinchZoom(m_gestureSpan - m_startGestureSpan);
    FlyAndTurn(-GetCameraW() * travel);
    m_lastZoomSpan = m_gestureSpan;
    return true;
}

bool TouchWorkflow::FlyTwoHands() {
    if (m_leftHandList.empty() || m_rightHandList.empty() || !m_exploreStarted) {
        return false;
    }
    const dg::DVec2 fly = GetExploreFlyDelta();
    FlyAndTurn(GetCameraU() * fly.x - GetCameraW() * fly.y);
    return true;
}

// Turns in the camera's own frame, about where up was when the flight started and about the camera's X axis, then
// travels in the world.
void TouchWorkflow::FlyAndTurn(const dg::DVec3& travel) {
    const dg::DVec2 turn = GetExploreTurnDelta(static_cast<double>(m_timerInterval) * SecondsPerMs);
    const double yaw = turn.x * m_viewWidth * ExploreYawScale;
    const double pitch = turn.y * m_viewHeight * ExplorePitchScale;
    dg::DVec3 axis = dg::DMat33(m_cameraLocation.GetMat()) * m_exploreUp;
    if (dg::Angle(m_exploreUp, GetCameraV()) > UpFlipRad) {
        axis = -axis;
    }
    const dg::DMat44 rotation(dg::DMat44::Rotation(axis, yaw), dg::DMat44::RotationX(pitch));
    dg::Location location = rotation * m_cameraLocation;
    location.SetPos(location.GetPos() + travel);
    ApplyGestureCamera(location);
}

double TouchWorkflow::PerspectivePinchZoom(double spanDelta) const {
    const double speed = m_frame.GetShapeView().GetNavSpeed();
    return GetPinchTravel(spanDelta, m_viewPixelWidth, speed, m_zoomStep);
}

double TouchWorkflow::OrthographicDragZoom(double delta) const {
    return GetPinchMagnification(delta, m_viewPixelWidth);
}

// Always from the width at the gesture's start, so that repeated steps gather no rounding.
void TouchWorkflow::ZoomOrthographicView(double factor) {
    du::SmartPtr<du::RefCounted> change;
    m_frame.GetShapeView().SetOrthographicWidth(factor * m_originalViewWidth, change);
}

}  // namespace touch
