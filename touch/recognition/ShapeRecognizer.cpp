// The recogniser and dispatcher for 3D views. Decides what a gesture can be there: a spin or a drag with one finger,
// pan, zoom and twist with several; and which processors run for it, in which order. Tested by
// tests/component/ShapeRecognizerTest.cpp.
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
    const bool goesOn = StepGestureState(m_navigateMode ? GestureSpin : GestureDrag, GesturePanZoomRotate);
    if (m_fingerCountChanged) {
        m_exploreStarted = false;
    }
    if (goesOn && m_gesture == GesturePanZoomRotate) {
        UpdateGestureCircle();
        CheckGestureCircle();
    }
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
            m_fingerPool.Remove(m_fingerList, finger);
        }
    }
    SortLeftToRight(m_fingerList);
    GroupFingers();
    GetHandsProperties();
    m_firstFingerId = m_fingerList.empty() ? FreeSlotId : m_fingerList.front().id;
    m_secondFingerId = m_fingerList.empty() ? FreeSlotId : m_fingerList.back().id;
    if (const std::optional<GestureCircle> circle = MeasureGestureCircle()) {
        TakeGestureCircle(*circle);
        m_lastGestureAngle = circle->angle;
    }
}

bool TouchWorkflow::processShapeViewGesture() {
    const hxk::Observable::UpdateGroup group(&m_frame.GetShapeView());
    bool used = false;
    switch (m_gesture) {
    case GestureSpin: used = ProcessSpin(); break;
    case GesturePanZoomRotate:
        m_frame.SetLift(DontUpdateView());
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
