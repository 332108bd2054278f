// A window into the component's state for traces and tests. It reads and never changes anything.
#pragma once

#include "touch/TouchWorkflow.h"

#include <list>

namespace touch {

class WorkflowInspector {
public:
    explicit WorkflowInspector(const TouchWorkflow& workflow) noexcept : m_workflow(workflow) {}

    [[nodiscard]] GestureType GetGesture() const { return m_workflow.m_gesture; }
    [[nodiscard]] GestureState GetGestureState() const { return m_workflow.m_gestureState; }
    [[nodiscard]] bool GetNavigateMode() const { return m_workflow.m_navigateMode; }
    [[nodiscard]] bool GetMarkupMode() const { return m_workflow.m_markupMode; }

    [[nodiscard]] int GetFingerCount() const { return m_workflow.m_fingerCount; }
    [[nodiscard]] int GetLastFingerCount() const { return m_workflow.m_lastFingerCount; }
    [[nodiscard]] int GetFirstFingerId() const { return m_workflow.m_firstFingerId; }
    [[nodiscard]] int GetSecondFingerId() const { return m_workflow.m_secondFingerId; }
    [[nodiscard]] const std::array<TouchState, SlotCount>& GetSlots() const { return m_workflow.m_touchStates; }
    [[nodiscard]] const std::list<TouchState>& GetFingerList() const { return m_workflow.m_fingerList; }
    [[nodiscard]] const std::list<TouchState>& GetLeftHand() const { return m_workflow.m_leftHandList; }
    [[nodiscard]] const std::list<TouchState>& GetRightHand() const { return m_workflow.m_rightHandList; }
    [[nodiscard]] dg::DPoint2D GetLeftHandCenter() const { return m_workflow.m_leftHandCenter; }
    [[nodiscard]] dg::DPoint2D GetRightHandCenter() const { return m_workflow.m_rightHandCenter; }
    [[nodiscard]] double GetRightHandSize() const { return m_workflow.m_rightHandSize; }

    [[nodiscard]] dg::DPoint2D GetGestureCenter() const { return m_workflow.m_gestureCenter; }
    [[nodiscard]] double GetGestureSpan() const { return m_workflow.m_gestureSpan; }
    [[nodiscard]] double GetGestureAngle() const { return m_workflow.m_gestureAngle; }
    [[nodiscard]] double GetLastGestureAngle() const { return m_workflow.m_lastGestureAngle; }
    [[nodiscard]] double GetStartGestureSpan() const { return m_workflow.m_startGestureSpan; }
    [[nodiscard]] double GetLastZoomSpan() const { return m_workflow.m_lastZoomSpan; }
    [[nodiscard]] bool IsZoomStarted() const { return m_workflow.m_zoomStarted; }
    [[nodiscard]] bool IsRotationStarted() const { return m_workflow.m_rotationStarted; }
    [[nodiscard]] bool IsExploreStarted() const { return m_workflow.m_exploreStarted; }

    [[nodiscard]] std::int64_t GetCurrentTime() const { return m_workflow.m_currentTime; }
    [[nodiscard]] std::int64_t GetTouchUpTime() const { return m_workflow.m_touchUpTime; }
    [[nodiscard]] bool IsTouchActive() const { return m_workflow.m_touchActive; }
    [[nodiscard]] bool IsTouchSeen() const { return m_workflow.m_touchSeen; }
    [[nodiscard]] bool IsViewChanged() const { return m_workflow.m_viewChanged; }
    [[nodiscard]] bool IsHoldClickSent() const { return m_workflow.m_holdClickSent; }
    [[nodiscard]] bool IsTapClickPending() const { return m_workflow.m_tapClickPending; }

    [[nodiscard]] int GetPpiX() const { return m_workflow.m_ppiX; }
    [[nodiscard]] int GetPpiY() const { return m_workflow.m_ppiY; }
    [[nodiscard]] double GetWorldDistance() const { return m_workflow.m_worldDistance; }
    [[nodiscard]] const dg::DBox& GetModelBounds() const { return m_workflow.m_modelBounds; }
    [[nodiscard]] const Trackball& GetSpinTrackball() const { return m_workflow.m_spinTrackball; }
    [[nodiscard]] const dg::Quaternion<float>& GetSpinVelocity() const { return m_workflow.m_spinVelocity; }
    [[nodiscard]] const SpinCenterMarkup* GetSpinCenterMarkup() const { return m_workflow.m_spinCenterMarkup.Get(); }
    [[nodiscard]] bool IsSpinCenterMarkupShown() const { return m_workflow.m_spinCenterMarkupShown; }
    [[nodiscard]] const TouchGetBoundsEvent* GetBoundsEvent() const { return m_workflow.m_boundsEvent.Get(); }
    [[nodiscard]] const hxk::ShapeView* GetShapeView() const { return m_workflow.m_shapeView.Get(); }
    [[nodiscard]] const hxk::View2D* GetView2D() const { return m_workflow.m_view2D.Get(); }

private:
    const TouchWorkflow& m_workflow;
};

}  // namespace touch
