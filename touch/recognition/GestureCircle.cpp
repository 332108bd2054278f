// The gesture circle: several fingers read as one circle with a centre, a diameter (the span) and a direction. With two
// hands it stands on their centres, with one hand on its outer fingers. Decides when a pinch and when a twist has
// begun; both last until the touch ends. Tested by tests/component/GestureCircleTest.cpp.
#include "host/dg/Conversion.h"
#include "touch/TouchWorkflow.h"

#include <cmath>
#include <iterator>
#include <numbers>

namespace touch {
namespace {

double FoldToFullTurn(double angle) {
    return angle < 0 ? angle + 2 * std::numbers::pi : angle;
}

PixelPosition ToPixel(const dg::DPoint2D& point) {
    return {dg::TruncateToInt32(point.x), dg::TruncateToInt32(point.y)};
}

}  // namespace

// The direction is from the right to the left.
std::optional<GestureCircle> TouchWorkflow::MeasureGestureCircle() const {
    if (!m_leftHandList.empty()) {
        const dg::DPoint2D& left = m_leftHandCenter;
        const dg::DPoint2D& right = m_rightHandCenter;
        const PixelPosition l = ToPixel(left);
        const PixelPosition r = ToPixel(right);
        return GestureCircle{{(right.x + left.x) * 0.5, (right.y + left.y) * 0.5},
                             DistanceBetweenPoints(l.x, r.x, l.y, r.y),
                             FoldToFullTurn(GetRotationAngle(l.x, r.x, l.y, r.y))};
    }
    if (m_rightHandList.empty()) {
        return std::nullopt;
    }
    const PixelPosition first = GetFingerPosition(m_rightHandList.front().id);
    const PixelPosition last = GetFingerPosition(m_rightHandList.back().id);
    return GestureCircle{m_rightHandCenter, m_rightHandSize,
                         FoldToFullTurn(GetRotationAngle(first.x, last.x, first.y, last.y))};
}

void TouchWorkflow::TakeGestureCircle(const GestureCircle& circle) {
    m_gestureCenter = circle.center;
    m_gestureSpan = circle.span;
}

void TouchWorkflow::UpdateGestureCircle() {
    GetHandsProperties();
    if (const std::optional<GestureCircle> circle = MeasureGestureCircle()) {
        TakeGestureCircle(*circle);
        m_gestureAngle = circle->angle;
    }
}

void TouchWorkflow::CheckGestureCircle() {
    const bool pinch = !m_zoomStarted && IsPinch();
    const bool twist = !m_rotationStarted && std::abs(m_gestureAngle - m_startGestureAngle) > TwistThresholdRad;
    if ((!pinch && !twist) || AreFingersTooClose()) {
        return;
    }
    if (pinch) {
        RequestBounds();
        m_startGestureSpan = m_gestureSpan;
        m_lastZoomSpan = m_gestureSpan;
        m_zoomStarted = true;
    }
    if (twist) {
        m_lastGestureAngle = m_gestureAngle;
        m_rotationStarted = true;
    }
}

void TouchWorkflow::CheckGestureCircle2D() {
    if (!m_zoomStarted && IsPinch()) {
        m_startGestureSpan = m_gestureSpan;
        m_zoomStarted = true;
    }
}

// Two, three or four fingers of one relaxed hand: their small differences are no pinch and no twist. A frame that
// reports a count for which the list holds too few fingers has no such gate.
bool TouchWorkflow::AreFingersTooClose() const {
    if (m_fingerCount == 2) {
        return GetTwoFingerDistance(m_firstFingerId, m_secondFingerId) <= TwoFingerProximityInch;
    }
    if ((m_fingerCount != 3 && m_fingerCount != 4) || std::ssize(m_fingerList) < m_fingerCount) {
        return false;
    }
    auto finger = m_fingerList.begin();
    for (int gap = 1; gap < m_fingerCount; ++gap) {
        const int left = finger->id;
        ++finger;
        if (!(GetTwoFingerDistance(left, finger->id) <= NeighbourProximityInch)) {
            return false;
        }
    }
    return true;
}

// A ratio that is not a number, with no reference taken yet, is no pinch; an infinite one, from a span of 0, is.
bool TouchWorkflow::IsPinch() const {
    const double ratio = m_startGestureSpan / m_gestureSpan;
    return ratio > PinchBandHigh || ratio < PinchBandLow;
}

}  // namespace touch
