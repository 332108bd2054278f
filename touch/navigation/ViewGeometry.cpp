// The camera snapshot and the way from a pixel to the view plane. Within one step everything is mapped with the camera
// as it was when the step took its snapshot. Rows are not flipped: pixel row 0 is the bottom of the window.
// Tested by tests/component/ViewGeometryTest.cpp.
#include "host/dg/Conversion.h"
#include "touch/TouchWorkflow.h"

namespace touch {

void TouchWorkflow::UpdateViewParameters() {
    dg::Camera3D camera;
    m_frame.GetShapeView().GetCamera(camera);
    m_viewPixelWidth = camera.GetViewportWidth();
    m_viewPixelHeight = camera.GetViewportHeight();
    camera.GetProjection(m_projLeft, m_projRight, m_projBottom, m_projTop, m_viewPlaneDistance, m_orthographic);
    m_viewWidth = m_projRight - m_projLeft;
    m_viewHeight = m_projTop - m_projBottom;
    m_cameraLocation = camera.GetLocation();
}

dg::DVec2 TouchWorkflow::GetViewPlaneTouch(int x, int y) const {
    return {x / m_viewPixelWidth * m_viewWidth + m_projLeft, y / m_viewPixelHeight * m_viewHeight + m_projBottom};
}

dg::DVec3 TouchWorkflow::GetViewPlaneTouch3(int x, int y) const {
    const dg::DVec2 point = GetViewPlaneTouch(x, y);
    return {point.x, point.y, m_viewPlaneDistance};
}

dg::DVec3 TouchWorkflow::GetViewPlaneGestureCenter() const {
    return GetViewPlaneTouch3(dg::TruncateToInt32(m_gestureCenter.x), dg::TruncateToInt32(m_gestureCenter.y));
}

dg::DVec2 TouchWorkflow::GetPixelCenter() const {
    return {m_viewPixelWidth * 0.5, m_viewPixelHeight * 0.5};
}

double TouchWorkflow::GetViewWidth() const {
    return m_viewWidth;
}

double TouchWorkflow::GetOriginalViewWidth() const {
    return m_originalViewWidth;
}

void TouchWorkflow::SetOriginalViewWidth(double width) {
    m_originalViewWidth = width;
}

bool TouchWorkflow::IsOrthographic() const {
    return m_orthographic;
}

bool TouchWorkflow::IsPerspective() const {
    return !m_orthographic;
}

const dg::Location& TouchWorkflow::GetCameraLocation() const {
    return m_cameraLocation;
}

dg::DVec3 TouchWorkflow::GetCameraU() const {
    return dg::DVec3(m_cameraLocation.GetU());
}

dg::DVec3 TouchWorkflow::GetCameraV() const {
    return dg::DVec3(m_cameraLocation.GetV());
}

dg::DVec3 TouchWorkflow::GetCameraW() const {
    return dg::DVec3(m_cameraLocation.GetW());
}

}  // namespace touch
