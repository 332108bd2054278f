// Holds, asked on every tick: one finger kept still for a second becomes a right click, three fingers kept still for
// three seconds switch the mode. The times are those of the stored touch records, so a hold grows only while the host
// keeps sending frames for resting fingers. Tested by tests/component/HoldsTest.cpp.
#include "host/workflow/ConstStrings.h"
#include "touch/TouchWorkflow.h"
#include "touch/tracking/FingerMotion.h"

namespace touch {

void TouchWorkflow::ProcessPressAndHold() {
    const TouchState& finger = m_touchStates[0];
    if (m_fingerCount != 1 || m_viewChanged || GetFingerIsMoving(0, finger.currentX, finger.currentY, true)) {
        return;
    }
    const bool oneFingerGesture = m_gesture == GestureSpin || m_gesture == GestureDrag || m_gesture == Gesture2DPan;
    if (!oneFingerGesture || m_gestureState != GestureRecognized || finger.state != TSMove) {
        return;
    }
    const std::int32_t duration = GetDuration(finger);
    if (duration < PressAndHoldFirstMs || duration > PressAndHoldLastMs || m_holdClickSent) {
        return;
    }
    m_holdClickSent = true;
    // Delivery of the first message may change the slot.
    const int x = finger.currentX;
    const int y = finger.currentY;
    SendMouseMsg(workflow::ConstStrings::MsgMouseRightDown, x, y);
    SendMouseMsg(workflow::ConstStrings::MsgMouseRightUp, x, y);
}

void TouchWorkflow::ProcessThreeFingerHold() {
    if (m_fingerCount != 3 || m_threeFingerToggled) {
        return;
    }
    for (int slot = 0; slot < 3; ++slot) {
        const TouchState& finger = m_touchStates[static_cast<std::size_t>(slot)];
        if (!IsHolding(slot, finger.currentX, finger.currentY, finger.currentTime, ThreeFingerHoldMs, true)) {
            return;
        }
    }
    if (GetDuration(m_touchStates[2]) >= ThreeFingerHoldEndMs) {
        return;
    }
    if (IsModeSwitchable()) {
        m_navigateMode = !m_navigateMode;
        m_threeFingerToggled = true;
    }
    SetStatusBarMessage();
}

}  // namespace touch
