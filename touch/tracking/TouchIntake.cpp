// The entry of a touch frame. Decides by the kind of the current view whether the frame drives the 3D or the 2D
// pipeline, stores its fingers, and hands over to the recogniser and the processors.
// Tested by tests/component/TouchIntakeTest.cpp.
#include "touch/TouchWorkflow.h"
#include "touch/shell/Boundary.h"

namespace touch {
namespace {

bool IsView2D(const hxk::View& view) {
    return view.IsATypeOf(hxk::ImageView::CLASS_TYPE) || view.IsATypeOf(hxk::DrawingView::CLASS_TYPE) ||
           view.IsATypeOf(hxk::DocumentView::CLASS_TYPE) || view.IsATypeOfId(hxk::EcadSchematicViewId) ||
           view.IsATypeOfId(hxk::EcadPcbViewId) || view.IsATypeOfId(hxk::SchematicFigureViewId);
}

// Makes `latest` the view of this frame and answers it; null, with `latest` as it was, when the view is of another
// class. On most frames it is the same view as before, which needs no run-time test. The going of the view before it
// can set `latest` once more: the answer is what the frame is for.
template <class Kind>
Kind* FollowView(du::SmartPtr<Kind>& latest, const du::SmartPtr<hxk::View>& view) {
    if (latest.Get() == view.Get()) {
        return latest.Get();
    }
    auto* kind = dynamic_cast<Kind*>(view.Get());
    if (kind != nullptr) {
        latest = kind;
    }
    return kind;
}

}  // namespace

TSType TouchWorkflow::GetTouchState(int flags) {
    if ((flags & workflow::TouchDown) != 0) {
        return TSDown;
    }
    if ((flags & workflow::TouchMove) != 0) {
        return TSMove;
    }
    return (flags & workflow::TouchUp) != 0 ? TSUp : TSNone;
}

bool TouchWorkflow::OnMsgTouch(int /*reserved*/, int count, int id0, int x0, int y0, int time0, int flags0, int id1,
                               int x1, int y1, int time1, int flags1, int id2, int x2, int y2, int time2, int flags2,
                               int id3, int x3, int y3, int time3, int flags3, int id4, int x4, int y4, int time4,
                               int flags4, int id5, int x5, int y5, int time5, int flags5, int id6, int x6, int y6,
                               int time6, int flags6, int id7, int x7, int y7, int time7, int flags7, int id8, int x8,
                               int y8, int time8, int flags8, int id9, int x9, int y9, int time9, int flags9) {
    return Guarded(*this, [&] {
        m_touchSeen = true;
        // A status bar that fails stops no gesture.
        Guarded([&] { return OnMsgUpdateStatusBar(); });
        const du::SmartPtr<hxk::View> view = GetView();
        const FrameTarget target = FindFrameTarget(view);
        const bool isShape = target.shape != nullptr;
        if (!isShape && target.page == nullptr) {
            return target.isUnknown;
        }
        const FrameContext::Scope scope(m_frame, target.shape, target.page);
        du::SmartPtr<hxk::Scene> scene;  // held until the frame is processed
        if (isShape) {
            view->GetScene(scene);
        }
        SaveFingersStatus(count, id0, x0, y0, time0, flags0, id1, x1, y1, time1, flags1, id2, x2, y2, time2, flags2,
                          id3, x3, y3, time3, flags3, id4, x4, y4, time4, flags4, id5, x5, y5, time5, flags5, id6, x6,
                          y6, time6, flags6, id7, x7, y7, time7, flags7, id8, x8, y8, time8, flags8, id9, x9, y9, time9,
                          flags9);
        if (isShape) {
            RecognizeGesture();
            return processShapeViewGesture();
        }
        RecognizeGesture2D();
        return process2DViewGesture();
    });
}

TouchWorkflow::FrameTarget TouchWorkflow::FindFrameTarget(const du::SmartPtr<hxk::View>& view) {
    if (!view) {
        return {};
    }
    if (view->IsATypeOf(hxk::ShapeView::CLASS_TYPE)) {
        return {.shape = FollowView(m_shapeView, view)};
    }
    if (IsView2D(*view)) {
        return {.page = FollowView(m_view2D, view)};
    }
    return {.isUnknown = true};
}

inline void TouchWorkflow::SaveFingersStatus(int count, int id0, int x0, int y0, int time0, int flags0, int id1, int x1,
                                             int y1, int time1, int flags1, int id2, int x2, int y2, int time2,
                                             int flags2, int id3, int x3, int y3, int time3, int flags3, int id4,
                                             int x4, int y4, int time4, int flags4, int id5, int x5, int y5, int time5,
                                             int flags5, int id6, int x6, int y6, int time6, int flags6, int id7,
                                             int x7, int y7, int time7, int flags7, int id8, int x8, int y8, int time8,
                                             int flags8, int id9, int x9, int y9, int time9, int flags9) {
    if (count == 1 && GetTouchState(flags0) == TSDown) {
        ResetTouchStates();
    }
    m_fingerCount = count;
    m_touchTime = time0;
    m_lastTouchTime = m_currentTime;
    m_touchActive = true;
    // An empty first record is skipped, any other ends the frame.
    SaveFinger(id0, x0, y0, time0, flags0);
    if (!SaveFinger(id1, x1, y1, time1, flags1)) {
        return;
    }
    if (!SaveFinger(id2, x2, y2, time2, flags2)) {
        return;
    }
    if (!SaveFinger(id3, x3, y3, time3, flags3)) {
        return;
    }
    if (!SaveFinger(id4, x4, y4, time4, flags4)) {
        return;
    }
    if (!SaveFinger(id5, x5, y5, time5, flags5)) {
        return;
    }
    if (!SaveFinger(id6, x6, y6, time6, flags6)) {
        return;
    }
    if (!SaveFinger(id7, x7, y7, time7, flags7)) {
        return;
    }
    if (!SaveFinger(id8, x8, y8, time8, flags8)) {
        return;
    }
    SaveFinger(id9, x9, y9, time9, flags9);
}

bool TouchWorkflow::SaveFinger(int id, int x, int y, int time, int flags) {
    if (id == FreeSlotId) {
        return false;
    }
    if (TouchState* slot = MatchSlot(id)) {
        slot->Update(id, x, y, time, GetTouchState(flags));
    }
    return true;
}

}  // namespace touch
