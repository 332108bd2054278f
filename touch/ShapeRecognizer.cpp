// The recogniser and dispatcher for 3D views. Decides the kind of a gesture, once, on the frame on which the number of
// fingers changes: no span is one finger, any span is several. The state diagram is in docs/GESTURES.md.
// Tested by tests/component/ShapeRecognizerTest.cpp.
#include "touch/TouchWorkflow.h"

#include <algorithm>

namespace touch {

void TouchWorkflow::RecognizeGesture() {
    // The last count is written after the processors have run, so that they see the change too.
    m_fingerCountChanged = m_fingerCount != m_lastFingerCount;
    if (m_fingerCountChanged) {
        RestartGesture();
        m_exploreStarted = false;
    }
    switch (m_gestureState) {
    case GestureIdle:
        if (!m_markupMode || m_fingerCount == 1) {
            RestartGesture();
        }
        return;
    case GestureStarted: ClassifyGesture(m_navigateMode ? GestureSpin : GestureDrag, GesturePanZoomRotate); return;
    case GestureRecognized:
        if (m_gesture == GesturePanZoomRotate) {
            UpdateGestureCircle();
            CheckGestureCircle();
        }
        return;
    case GestureEnded: return;
    }
}

void TouchWorkflow::RestartGesture() {
    UpdateGesture();
    m_gestureState = GestureStarted;
    m_gesture = GestureNone;
}

// A span that is not a number, as after a reset without fingers, leaves the gesture unclassified.
void TouchWorkflow::ClassifyGesture(GestureType oneFinger, GestureType severalFingers) {
    if (m_markupMode) {
        m_gesture = GestureMarkup;
    } else if (m_gestureSpan == 0.0) {
        m_gesture = oneFinger;
    } else if (m_gestureSpan > 0.0) {
        m_gesture = severalFingers;
    } else {
        return;
    }
    m_gestureState = GestureRecognized;
}

void TouchWorkflow::UpdateGesture() {
    for (const TouchState& slot : m_touchStates) {
        if (slot.id != FreeSlotId && slot.state != TSNone) {
            AddFingerList(slot);
        }
    }
    m_fingerList.remove_if([](const TouchState& f) { return f.state == TSNone || f.state == TSUp; });
    m_fingerList.sort([](const TouchState& a, const TouchState& b) { return GetPosition(a).x < GetPosition(b).x; });
    GroupFingers();
    GetHandsProperties();
    m_firstFingerId = m_fingerList.empty() ? FreeSlotId : m_fingerList.front().id;
    m_secondFingerId = m_fingerList.empty() ? FreeSlotId : m_fingerList.back().id;
    MeasureGestureCircle(m_lastGestureAngle);
}

bool TouchWorkflow::processShapeViewGesture() {
    const hxk::Observable::UpdateGroup group{du::SmartPtr<hxk::Observable>(m_shapeView)};
    bool used = false;
    switch (m_gesture) {
    case GestureSpin: used = ProcessSpin(); break;
    case GesturePanZoomRotate:
        // Pan takes the references of all three on the first frame, so it goes first.
        ProcessPan();
        ProcessZoom();
        used = ProcessRotation();
        break;
    case GestureDrag: used = ProcessDrag(); break;
    case GestureNone:
    case GestureTap:
    case GestureMarkup:
    case Gesture2DPan:
    case Gesture2DZoomPan: break;
    }
    m_lastFingerCount = m_fingerCount;
    ClearUpFingerState();
    return used;
}

bool TouchWorkflow::DontUpdateView() const {
    return std::any_of(m_touchStates.begin(), m_touchStates.end(), [&](const TouchState& slot) {
        return slot.id != FreeSlotId && slot.startTime != 0 && slot.currentTime == m_touchTime && slot.state == TSUp;
    });
}

}  // namespace touch
