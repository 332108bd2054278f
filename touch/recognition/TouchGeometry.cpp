// Finger positions to distances and directions: in whole pixels for the gesture circle, in physical inches, per axis,
// for hands and proximity, and the model's size in world units for zoom and flight.
// Tested by tests/component/TouchGeometryTest.cpp.
#include "host/dg/Conversion.h"
#include "host/dg/Functions.h"
#include "touch/TouchWorkflow.h"

#include <algorithm>
#include <cmath>

namespace touch {

using dg::TruncateToInt32;

double TouchWorkflow::DistanceBetweenPoints(int x1, int x2, int y1, int y2) const {
    const std::int32_t dx = dg::WrapSubtract(x1, x2);
    const std::int32_t dy = dg::WrapSubtract(y1, y2);
    return std::sqrt(static_cast<double>(dg::WrapAdd(dg::WrapMultiply(dx, dx), dg::WrapMultiply(dy, dy))));
}

double TouchWorkflow::DistanceBetweenPoints(dg::DPoint2D p1, dg::DPoint2D p2) const {
    return DistanceBetweenPoints(TruncateToInt32(p2.x), TruncateToInt32(p1.x), TruncateToInt32(p2.y),
                                 TruncateToInt32(p1.y));
}

double TouchWorkflow::GetRotationAngle(int x1, int x2, int y1, int y2) const {
    return dg::Atan2(static_cast<double>(dg::WrapSubtract(y1, y2)), static_cast<double>(dg::WrapSubtract(x1, x2)));
}

double TouchWorkflow::GetRotationAngle(dg::DPoint2D p1, dg::DPoint2D p2) const {
    return GetRotationAngle(TruncateToInt32(p2.x), TruncateToInt32(p1.x), TruncateToInt32(p2.y), TruncateToInt32(p1.y));
}

double TouchWorkflow::GetTwoFingerDistance(int id1, int id2) const {
    const PixelPosition p1 = GetFingerPosition(id1);
    const PixelPosition p2 = GetFingerPosition(id2);
    return GetTwoFingerDistance(p1.x, p1.y, p2.x, p2.y);
}

double TouchWorkflow::GetTwoFingerDistance(int x1, int y1, int x2, int y2) const {
    const double dx = static_cast<double>(dg::AbsoluteDifference(x1, x2)) / m_ppiX;
    const double dy = static_cast<double>(dg::AbsoluteDifference(y1, y2)) / m_ppiY;
    return std::sqrt(dx * dx + dy * dy);
}

PixelPosition TouchWorkflow::GetFingerPosition(int id) const {
    const TouchState* finger = MatchSlot(id);
    return finger == nullptr ? PixelPosition{} : GetPosition(*finger);
}

void TouchWorkflow::GetWorldDistance() {
    if (m_modelBounds.IsEmpty() || !m_shapeView) {
        return;
    }
    const dg::DVec3 size = m_modelBounds.GetSize();
    const double mean = (size.y + size.x + size.z) / 3.0;
    dg::Camera3D camera;
    du::SmartPtr<hxk::ShapeView>(m_shapeView)->GetCamera(camera);
    dg::DBox eyeBox = m_modelBounds;
    eyeBox *= camera.GetWorldToEye();
    const double depth = std::max(std::abs(eyeBox.min.z), std::abs(eyeBox.max.z));
    const double distance = std::max(depth, mean);
    m_worldDistance = distance > 0.0 ? distance : 1.0;
}

// The half unit is added whatever the sign, so values are not rounded away from zero.
double TouchWorkflow::GetFixedDigitNumber(double value, int digits) const {
    const double scale = dg::PowerOfTen(digits);
    const double halfUnit = 5.0 * dg::PowerOfTen(~digits);  // -digits - 1, which could overflow
    return TruncateToInt32((value + halfUnit) * scale) / scale;
}

}  // namespace touch
