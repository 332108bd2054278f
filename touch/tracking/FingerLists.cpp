// The gesture's finger list and the end of touches. Decides what a reset clears and when a one-finger gesture has
// ended. Tested by tests/component/FingersTest.cpp.
#include "touch/TouchWorkflow.h"

#include <algorithm>
#include <limits>

namespace touch {

void TouchWorkflow::AddFingerList(TouchState state) {
    const auto same = [&](const TouchState& finger) { return finger.id == state.id; };
    const auto known = std::find_if(m_fingerList.begin(), m_fingerList.end(), same);
    if (known == m_fingerList.end()) {
        m_fingerPool.Append(m_fingerList, state);
        return;
    }
    known->Update(state.id, state.currentX, state.currentY, state.currentTime, state.state);
}

void TouchWorkflow::ResetTouchStates() {
    m_touchStates.fill({});
    m_firstFingerId = FreeSlotId;
    m_secondFingerId = FreeSlotId;
    ClearGestureRecord();
    m_lastFingerCount = 0;
    m_holdClickSent = false;
    m_viewChanged = false;
    m_rotationStarted = false;
    m_zoomStarted = false;
    m_threeFingerToggled = false;
    m_tapClickPending = false;
    m_fingerPool.RemoveAll(m_fingerList);
    m_fingerPool.RemoveAll(m_leftHandList);
    m_fingerPool.RemoveAll(m_rightHandList);
    m_leftHandCenter = dg::DPoint2D::BAD;
    m_rightHandCenter = dg::DPoint2D::BAD;
    m_leftHandSize = 0;
    m_rightHandSize = 0;
}

void TouchWorkflow::ClearGestureRecord() {
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    ForgetGesture();
    m_gestureCenter = dg::DPoint2D::BAD;
    m_lastPanCenter = dg::DPoint2D::BAD;
    m_gestureSpan = nan;
    m_gestureAngle = nan;
    m_lastGestureAngle = nan;
    m_startGestureAngle = nan;
    m_startGestureSpan = nan;
}

void TouchWorkflow::ClearUpFingerState() {
    if (m_fingerCount != 1) {
        return;
    }
    const TouchState* finger = MatchSlot(m_firstFingerId);
    if (finger == nullptr || finger->state != TSUp) {
        return;
    }
    m_touchUpTime = m_currentTime;
    m_lastFingerCount = 0;
    EndGesture();
}

}  // namespace touch
