// Fingers to hands, and hands to flight. Decides where the fingers divide into two hands (at the widest gap that is
// wide enough) and how far the hands of an explore gesture have moved from where they started. A hand's membership is
// fixed when the fingers are grouped; its measures are read live. Tested by tests/component/HandsTest.cpp.
#include "touch/TouchWorkflow.h"
#include "touch/navigation/FlightLaws.h"

#include <algorithm>
#include <iterator>

namespace touch {
namespace {

const du::Symbol ExploreMethod("explore");

}  // namespace

void TouchWorkflow::GroupFingers() {
    auto split = m_fingerList.end();
    double widest = HandGapInch;
    if (!m_fingerList.empty()) {
        for (auto left = m_fingerList.begin(), right = std::next(left); right != m_fingerList.end(); ++left, ++right) {
            const PixelPosition a = GetPosition(*left);
            const PixelPosition b = GetPosition(*right);
            const double gap = GetTwoFingerDistance(a.x, a.y, b.x, b.y);
            if (gap > widest) {
                widest = gap;
                split = right;
            }
        }
    }
    m_fingerPool.RemoveAll(m_leftHandList);
    m_fingerPool.RemoveAll(m_rightHandList);
    // One hand is the right one.
    if (split == m_fingerList.end()) {
        split = m_fingerList.begin();
    }
    for (auto finger = m_fingerList.begin(); finger != split; ++finger) {
        m_fingerPool.Append(m_leftHandList, *finger);
    }
    for (auto finger = split; finger != m_fingerList.end(); ++finger) {
        m_fingerPool.Append(m_rightHandList, *finger);
    }
}

void TouchWorkflow::GetHandsProperties() {
    const auto measure = [this](const std::list<TouchState>& hand, dg::DPoint2D& center, double& size) {
        if (hand.empty()) {
            return;
        }
        PixelPosition low = GetFingerPosition(hand.front().id);
        PixelPosition high = low;
        for (auto finger = std::next(hand.begin()); finger != hand.end(); ++finger) {
            const PixelPosition place = GetFingerPosition(finger->id);
            low = {std::min(low.x, place.x), std::min(low.y, place.y)};
            high = {std::max(high.x, place.x), std::max(high.y, place.y)};
        }
        const dg::DBox2D box{{static_cast<double>(low.x), static_cast<double>(low.y)},
                             {static_cast<double>(high.x), static_cast<double>(high.y)}};
        center = box.GetCenter();
        size = box.GetDiagonal();
    };
    measure(m_leftHandList, m_leftHandCenter, m_leftHandSize);
    measure(m_rightHandList, m_rightHandCenter, m_rightHandSize);
}

bool TouchWorkflow::GetExploreEnabled() const {
    return m_frame.HasShapeView() && m_frame.GetShapeView().GetNavMethod() == ExploreMethod;
}

dg::DVec2 TouchWorkflow::GetExploreFlyDelta() {
    m_zoomStep = m_worldDistance * ExploreStepScale;
    const double dx = GetExploreLeftTouchXDelta(ExploreDeadZonePx);
    const double dy = GetExploreLeftTouchYDelta(ExploreDeadZonePx);
    if (dx == 0.0 && dy == 0.0) {
        return dg::DVec2::ZERO;
    }
    const double bandX = m_viewPixelWidth / FlyBandsPerView;
    const double bandY = m_viewPixelHeight / FlyBandsPerView;
    return {ReduceByBand(dx, bandX) / bandX * m_zoomStep,
            dy / bandY * m_zoomStep * m_frame.GetShapeView().GetNavSpeed()};
}

double TouchWorkflow::GetExploreLeftTouchXDelta(double deadZone) const {
    return BeyondDeadZone(m_exploreLeftStart.x, m_leftHandCenter.x, deadZone);
}

double TouchWorkflow::GetExploreLeftTouchYDelta(double deadZone) const {
    return BeyondDeadZone(m_exploreLeftStart.y, m_leftHandCenter.y, deadZone);
}

double TouchWorkflow::GetExploreRightTouchXDelta(double deadZone) const {
    return m_twoHandsExplore ? BeyondDeadZone(m_exploreRightStart.x, m_rightHandCenter.x, deadZone)
                             : BeyondDeadZone(m_exploreCenterStart.x, m_gestureCenter.x, deadZone);
}

double TouchWorkflow::GetExploreRightTouchYDelta(double deadZone) const {
    return m_twoHandsExplore ? BeyondDeadZone(m_exploreRightStart.y, m_rightHandCenter.y, deadZone)
                             : BeyondDeadZone(m_exploreCenterStart.y, m_gestureCenter.y, deadZone);
}

dg::DVec2 TouchWorkflow::GetExploreTurnDelta(double stepSeconds) const {
    const double dx = GetExploreRightTouchXDelta(ExploreDeadZonePx);
    const double dy = GetExploreRightTouchYDelta(ExploreDeadZonePx);
    if (dx == 0.0 && dy == 0.0) {
        return dg::DVec2::ZERO;
    }
    return {GetFlightTurn(dx, m_viewPixelWidth, stepSeconds), GetFlightTurn(dy, m_viewPixelHeight, stepSeconds)};
}

}  // namespace touch
