// The states of a gesture. Everything that changes them stands here, in the order of the diagram in docs/GESTURES.md;
// only a tap, which changes nothing but what the gesture was, is noted where it is found.
// Tested by tests/component/ShapeRecognizerTest.cpp.
#include "touch/TouchWorkflow.h"

namespace touch {

bool TouchWorkflow::StepGestureState(GestureType oneFinger, GestureType severalFingers) {
    // The last count is written after the processors have run, so that they see the change too.
    m_fingerCountChanged = m_fingerCount != m_lastFingerCount;
    if (m_fingerCountChanged) {
        StartGesture();
    }
    switch (m_gestureState) {
    case GestureIdle:
        if (!m_markupMode || m_fingerCount == 1) {
            StartGesture();
        }
        return false;
    case GestureStarted: ClassifyGesture(oneFinger, severalFingers); return false;
    case GestureRecognized: return true;
    case GestureEnded: return false;
    }
    return false;
}

void TouchWorkflow::ForgetGesture() {
    m_gesture = GestureNone;
    m_gestureState = GestureIdle;
}

void TouchWorkflow::StartGesture() {
    UpdateGesture();
    m_gesture = GestureNone;
    m_gestureState = GestureStarted;
}

// A span that is not a number, as after a reset without fingers, leaves the gesture started.
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

void TouchWorkflow::EndGesture() {
    m_gestureState = GestureEnded;
}

}  // namespace touch
