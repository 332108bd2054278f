// Pan and zoom of 2D views. The visible area moves by exactly the model distance that the fingers cover; the width
// follows the ratio of the spans, always from the width at the gesture's start. Also ends a one-finger touch by
// offering it to the taps. Tested by tests/component/View2DTest.cpp.
#include "touch/TouchWorkflow.h"
#include "touch/tracking/FingerMotion.h"

namespace touch {

void TouchWorkflow::SingleFinger2DInitialize(int /*x*/, int /*y*/) {
    m_touchDownTime = m_currentTime;
    m_touchUpTime = 0;
    m_lastPanCenter = m_gestureCenter;
}

bool TouchWorkflow::Process2DPan() {
    TouchState* finger = MatchSlot(m_firstFingerId);
    if (finger == nullptr) {
        return false;
    }
    if (m_fingerCountChanged) {
        if (finger->state != TSDown && finger->state != TSMove) {
            return false;
        }
        SingleFinger2DInitialize(finger->currentX, finger->currentY);
        return true;
    }
    if (finger->state == TSUp) {
        if (!ProcessTwoFingerTap()) {
            ProcessTap();
        }
        return true;
    }
    return finger->state == TSMove && Pan2D(*finger);
}

bool TouchWorkflow::Pan2D(TouchState& finger) {
    const int x = finger.currentX;
    const int y = finger.currentY;
    if (m_holdClickSent || x == 0 || y == 0) {
        return false;
    }
    if (!MarkIfMoving(finger, x, y)) {
        return false;
    }
    if (m_frame.HasLift()) {
        return false;
    }
    dg::Location location;
    m_frame.GetPage().GetViewLocation(location);
    unsigned int pixelWidth = 0;
    unsigned int pixelHeight = 0;
    m_frame.GetPage().GetViewSize(pixelWidth, pixelHeight);
    double width = 0;
    m_frame.GetPage().GetOrthoWidth(width);
    const double aspect = static_cast<double>(pixelWidth) / static_cast<double>(pixelHeight);
    const double height = width / aspect;
    const double dx = (m_gestureCenter.x - m_lastPanCenter.x) / pixelWidth;
    const double dy = (m_gestureCenter.y - m_lastPanCenter.y) / pixelHeight;
    const dg::DVec3 sideways = dg::DVec3(location.GetU()) * (-width * dx);
    const dg::DVec3 upward = dg::DVec3(location.GetV()) * (-height * dy);
    m_frame.GetPage().SetPosition(location.GetPos() + sideways + upward);
    m_viewChanged = true;
    m_lastPanCenter = m_gestureCenter;
    return true;
}

bool TouchWorkflow::Process2DZoom() {
    if (m_fingerCountChanged) {
        m_frame.GetPage().GetOrthoWidth(m_originalViewWidth);
        m_startGestureSpan = m_gestureSpan;
        return true;
    }
    if (!m_zoomStarted || m_dontZoom || m_frame.HasLift()) {
        return false;
    }
    const double ratio = m_startGestureSpan / m_gestureSpan;
    if (ratio == 1.0 || !(ratio > 0)) {
        return true;
    }
    m_frame.GetPage().SetOrthoWidth(ratio * m_originalViewWidth);
    m_viewChanged = true;
    return true;
}

}  // namespace touch
