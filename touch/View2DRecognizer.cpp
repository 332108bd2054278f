// The recogniser and dispatcher for 2D views. As for 3D views, but one finger pans, several zoom and pan, nothing
// twists, and the circle follows one finger too. The state diagram is in docs/GESTURES.md.
// Tested by tests/component/View2DTest.cpp.
#include "touch/TouchWorkflow.h"

namespace touch {

void TouchWorkflow::RecognizeGesture2D() {
    m_fingerCountChanged = m_fingerCount != m_lastFingerCount;
    if (m_fingerCountChanged) {
        RestartGesture();
    }
    switch (m_gestureState) {
    case GestureIdle:
        if (!m_markupMode || m_fingerCount == 1) {
            RestartGesture();
        }
        return;
    case GestureStarted: ClassifyGesture(m_navigateMode ? Gesture2DPan : GestureDrag, Gesture2DZoomPan); return;
    case GestureRecognized:
        if (m_gesture == Gesture2DPan || m_gesture == Gesture2DZoomPan) {
            UpdateGestureCircle();
            CheckGestureCircle2D();
        }
        return;
    case GestureEnded: return;
    }
}

bool TouchWorkflow::process2DViewGesture() {
    const hxk::Observable::UpdateGroup group(m_frameView2D.Get());
    bool used = false;
    m_fingerLifted = DontUpdateView();
    switch (m_gesture) {
    case GestureDrag: used = ProcessDrag(); break;
    case Gesture2DPan: used = Process2DPan(); break;
    case Gesture2DZoomPan:
        Process2DZoom();
        used = Process2DPan();
        break;
    case GestureNone:
    case GestureTap:
    case GestureSpin:
    case GesturePanZoomRotate:
    case GestureMarkup: break;
    }
    m_lastFingerCount = m_fingerCount;
    ClearUpFingerState();
    return used;
}

}  // namespace touch
