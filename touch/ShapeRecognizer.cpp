// The recogniser and dispatcher for 3D views. Decides the kind of a gesture, once, on the frame on which the number of
// fingers changes: no span is one finger, any span is several. The state diagram is in docs/GESTURES.md.
// Tested by tests/component/ShapeRecognizerTest.cpp.
#include "touch/TouchWorkflow.h"

#include <iterator>

namespace touch {
namespace {

// Stable, and cheap for fingers that come in order, as they mostly do.
void SortLeftToRight(std::list<TouchState>& fingers) {
    for (auto next = fingers.begin(); next != fingers.end();) {
        const auto finger = next++;
        auto place = finger;
        while (place != fingers.begin() && GetPosition(*finger).x < GetPosition(*std::prev(place)).x) {
            --place;
        }
        if (place != finger) {
            fingers.splice(place, fingers, finger);
        }
    }
}

}  // namespace

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
        if (slot.id == FreeSlotId) {
            break;
        }
        if (slot.state != TSNone) {
            AddFingerList(slot);
        }
    }
    for (auto next = m_fingerList.begin(); next != m_fingerList.end();) {
        const auto finger = next++;
        if (finger->state == TSNone || finger->state == TSUp) {
            m_spareFingers.splice(m_spareFingers.end(), m_fingerList, finger);
        }
    }
    SortLeftToRight(m_fingerList);
    GroupFingers();
    GetHandsProperties();
    m_firstFingerId = m_fingerList.empty() ? FreeSlotId : m_fingerList.front().id;
    m_secondFingerId = m_fingerList.empty() ? FreeSlotId : m_fingerList.back().id;
    MeasureGestureCircle(m_lastGestureAngle);
}

bool TouchWorkflow::processShapeViewGesture() {
    const hxk::Observable::UpdateGroup group(m_frameShapeView.Get());
    bool used = false;
    switch (m_gesture) {
    case GestureSpin: used = ProcessSpin(); break;
    case GesturePanZoomRotate:
        m_fingerLifted = DontUpdateView();
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
    for (const TouchState& slot : m_touchStates) {
        if (slot.id == FreeSlotId) {
            return false;
        }
        if (slot.startTime != 0 && slot.currentTime == m_touchTime && slot.state == TSUp) {
            return true;
        }
    }
    return false;
}

}  // namespace touch
