// The mouse filter. On a touch screen the host also delivers mouse messages that the system makes of the same touches,
// and the clicks that this component sends. Decides which pass: real mouse actions and the component's own click, once;
// echoes of a touch that is being handled as a gesture are swallowed. In markup mode everything passes.
// Tested by tests/component/MouseMessagesTest.cpp.
#include "touch/TouchWorkflow.h"

namespace touch {

bool TouchWorkflow::OnMsgClickLeft(int /*x*/, int /*y*/) {
    if (m_markupMode) {
        return false;
    }
    if (!m_navigateMode) {
        return IsRecognized(GestureDrag);
    }
    if (m_tapClickPending) {
        m_tapClickPending = false;
        return false;
    }
    if (m_gestureState == GestureRecognized) {
        return true;
    }
    if (m_gestureState == GestureEnded &&
        (m_gesture == GestureTap || m_gesture == GestureSpin || m_gesture == Gesture2DPan)) {
        ClearGestureRecord();
        return true;
    }
    return false;
}

bool TouchWorkflow::OnMsgDoubleClickLeft(int /*x*/, int /*y*/) {
    if (m_markupMode) {
        return false;
    }
    const TouchState* finger = MatchSlot(m_firstFingerId);
    if (finger != nullptr && finger->state == TSDown) {
        m_doubleClickWhileDown = true;
        return false;
    }
    return IsRecognized(GestureSpin);
}

bool TouchWorkflow::OnMsgMouseLeftDown(int /*x*/, int /*y*/) {
    if (m_markupMode) {
        return false;
    }
    if (!m_navigateMode) {
        return m_doubleClickWhileDown;
    }
    return m_doubleClickWhileDown || m_gestureState == GestureRecognized || GetTouchTappedNow();
}

bool TouchWorkflow::OnMsgMouseLeftUp(int /*x*/, int /*y*/) {
    if (m_markupMode) {
        return false;
    }
    if (m_doubleClickWhileDown) {
        m_doubleClickWhileDown = false;
        return false;
    }
    return m_navigateMode && (m_gestureState == GestureRecognized || GetFirstTouchUp());
}

bool TouchWorkflow::OnMsgMouseMove(int /*x*/, int /*y*/) {
    if (m_markupMode) {
        return false;
    }
    if (m_navigateMode) {
        return m_gestureState == GestureRecognized || GetTouchTappedNow();
    }
    return !IsRecognized(GestureDrag) && (IsOtherGesture() || GetTouchTappedNow());
}

bool TouchWorkflow::OnMsgMouseInitLeftDrag(int /*x*/, int /*y*/) {
    if (m_markupMode) {
        return false;
    }
    return m_navigateMode ? IsNavigating() || GetTouchTappedNow() : IsOtherGesture();
}

bool TouchWorkflow::OnMsgMouseLeftDrag(int /*x*/, int /*y*/) {
    if (m_markupMode) {
        return false;
    }
    if (m_navigateMode) {
        return IsNavigating() || GetFirstTouchUp();
    }
    return !IsRecognized(GestureDrag) && (IsOtherGesture() || GetFirstTouchUp());
}

bool TouchWorkflow::OnMsgMouseInitMiddleDrag(int /*x*/, int /*y*/) {
    return ReleaseStatusBar();
}

bool TouchWorkflow::OnMsgMouseInitRightDrag(int /*x*/, int /*y*/) {
    return ReleaseStatusBar();
}

bool TouchWorkflow::OnMsgMouseMiddleDrag(int /*x*/, int /*y*/) {
    return ReleaseStatusBar();
}

bool TouchWorkflow::OnMsgMouseRightDrag(int /*x*/, int /*y*/) {
    return ReleaseStatusBar();
}

bool TouchWorkflow::ReleaseStatusBar() {
    m_touchSeen = false;
    return false;
}

bool TouchWorkflow::IsRecognized(GestureType gesture) const {
    return m_gestureState == GestureRecognized && m_gesture == gesture;
}

bool TouchWorkflow::IsOtherGesture() const {
    return IsRecognized(GesturePanZoomRotate) || IsRecognized(Gesture2DPan) || IsRecognized(Gesture2DZoomPan);
}

bool TouchWorkflow::IsNavigating() const {
    return IsRecognized(GestureSpin) || IsOtherGesture();
}

}  // namespace touch
