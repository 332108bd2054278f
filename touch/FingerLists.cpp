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
        AppendFinger(m_fingerList, state);
        return;
    }
    known->Update(state.id, state.currentX, state.currentY, state.currentTime, state.state);
}

void TouchWorkflow::AppendFinger(std::list<TouchState>& fingers, const TouchState& state) {
    if (m_spareFingers.empty()) {
        m_spareFingers.emplace_back();
    }
    m_spareFingers.front() = state;
    fingers.splice(fingers.end(), m_spareFingers, m_spareFingers.begin());
}

void TouchWorkflow::RemoveFingers(std::list<TouchState>& fingers) {
    m_spareFingers.splice(m_spareFingers.end(), fingers);
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
    RemoveFingers(m_fingerList);
    RemoveFingers(m_leftHandList);
    RemoveFingers(m_rightHandList);
    m_leftHandCenter = dg::DPoint2D::BAD;
    m_rightHandCenter = dg::DPoint2D::BAD;
    m_leftHandSize = 0;
    m_rightHandSize = 0;
}

void TouchWorkflow::ClearGestureRecord() {
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    m_gesture = GestureNone;
    m_gestureState = GestureIdle;
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
    const TouchState* finger = FindSlot(m_firstFingerId);
    if (finger == nullptr || finger->state != TSUp) {
        return;
    }
    m_touchUpTime = m_currentTime;
    m_lastFingerCount = 0;
    m_gestureState = GestureEnded;
}

}  // namespace touch
