// The recogniser and dispatcher for 2D views. As for 3D views, but one finger pans, several zoom and pan, nothing
// twists, and the circle follows one finger too.
// Tested by tests/component/View2DTest.cpp.
#include "touch/TouchWorkflow.h"

namespace touch {

void TouchWorkflow::RecognizeGesture2D() {
    const bool goesOn = StepGestureState(m_navigateMode ? Gesture2DPan : GestureDrag, Gesture2DZoomPan);
    if (goesOn && (m_gesture == Gesture2DPan || m_gesture == Gesture2DZoomPan)) {
        UpdateGestureCircle();
        CheckGestureCircle2D();
    }
}

bool TouchWorkflow::process2DViewGesture() {
    const hxk::Observable::UpdateGroup group(&m_frame.GetPage());
    bool used = false;
    m_frame.SetLift(DontUpdateView());
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
