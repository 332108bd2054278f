// Fingers land as one hand or two, move by one motion and stay on the screen. Ids go round, so that one comes again
// while later ones are still down.
#include "fuzz/PlausibleHand.h"

#include "touch/Thresholds.h"

#include <algorithm>
#include <cmath>

namespace fuzz {
namespace {

// Pixels. Fingers stay on the screen, whose first row and column would carry no value.
constexpr double ScreenWidth = 1280;
constexpr double ScreenHeight = 800;

constexpr double PinchFactor = 1.04;  // a frame
constexpr double TurnRad = 0.03;

}  // namespace

void PlausibleHand::PutDown(Choices& choices) {
    constexpr int counts[] = {1, 1, 1, 1, 2, 2, 2, 3, 3, 4, 5, 9};
    constexpr int gaps[] = {120, 20, 60, 140, 190, 230, 400, 600};  // pixels between neighbours
    const int count = choices.OneOf(counts);
    const int gap = choices.OneOf(gaps);
    const bool apart = choices.Chance(30);  // two hands
    const double middle = choices.Between(20, 60) * 16.0;
    const double row = choices.Between(20, 30) * 16.0;
    for (int i = 0; i < count && m_fingers.size() < touch::SlotCount; ++i) {
        const double hand = !apart ? 0 : i % 2 == 0 ? -300 : 300;
        const int place = apart ? i / 2 : i;
        m_fingers.push_back({m_nextId, std::clamp(middle + hand + place * gap, 1.0, ScreenWidth - 1),
                             std::clamp(row + place * 7.0, 1.0, ScreenHeight - 1), workflow::TouchDown});
        m_nextId = (m_nextId + 1) % 13;
    }
    m_motion = Motion::Rest;
}

void PlausibleHand::ChooseMotion(Choices& choices) {
    constexpr Motion motions[] = {Motion::Rest,  Motion::Rest,     Motion::Creep, Motion::Sweep,
                                  Motion::Apart, Motion::Together, Motion::Turn,  Motion::Fly,
                                  Motion::Sweep, Motion::Rest,     Motion::Jump};
    constexpr int steps[] = {1, 7, 20, 60, -2, -13, -40, 0};
    m_motion = choices.OneOf(motions);
    if (m_motion == Motion::Sweep || m_motion == Motion::Fly || m_motion == Motion::Jump) {
        m_stepX = choices.OneOf(steps);
        m_stepY = choices.OneOf(steps);
    }
}

void PlausibleHand::LiftAll() {
    for (Finger& finger : m_fingers) {
        finger.flags = workflow::TouchUp;
    }
}

void PlausibleHand::LiftOne(Choices& choices) {
    if (!m_fingers.empty()) {
        m_fingers[static_cast<std::size_t>(choices.Below(static_cast<int>(m_fingers.size())))].flags =
            workflow::TouchUp;
    }
}

workflow::TouchFrame PlausibleHand::MakeFrame(std::int32_t milliseconds) {
    m_time += milliseconds;
    double centerX = 0;
    double centerY = 0;
    for (const Finger& finger : m_fingers) {
        centerX += finger.x / static_cast<double>(m_fingers.size());
        centerY += finger.y / static_cast<double>(m_fingers.size());
    }
    workflow::TouchFrame frame;
    frame.count = static_cast<std::int32_t>(m_fingers.size());
    for (std::size_t i = 0; i < m_fingers.size(); ++i) {
        Finger& finger = m_fingers[i];
        if (finger.flags == workflow::TouchMove) {
            Advance(finger, centerX, centerY);
        }
        frame.records[i] = {finger.id, static_cast<std::int32_t>(finger.x), static_cast<std::int32_t>(finger.y), m_time,
                            finger.flags};
    }
    std::erase_if(m_fingers, [](const Finger& finger) { return finger.flags == workflow::TouchUp; });
    for (Finger& finger : m_fingers) {
        finger.flags = workflow::TouchMove;
    }
    if (m_motion == Motion::Jump) {
        m_motion = Motion::Rest;
    }
    return frame;
}

void PlausibleHand::Advance(Finger& finger, double centerX, double centerY) const {
    const double x = finger.x - centerX;
    const double y = finger.y - centerY;
    switch (m_motion) {
    case Motion::Rest: return;
    case Motion::Creep: finger.x += 1; break;
    case Motion::Sweep:
        finger.x += m_stepX;
        finger.y += m_stepY;
        break;
    case Motion::Apart:
        finger.x = centerX + x * PinchFactor;
        finger.y = centerY + y * PinchFactor;
        break;
    case Motion::Together:
        finger.x = centerX + x / PinchFactor;
        finger.y = centerY + y / PinchFactor;
        break;
    case Motion::Turn:
        finger.x = centerX + x * std::cos(TurnRad) - y * std::sin(TurnRad);
        finger.y = centerY + x * std::sin(TurnRad) + y * std::cos(TurnRad);
        break;
    case Motion::Fly:  // the left hand one way, the right hand the other
        finger.x += x < 0 ? m_stepX : 0;
        finger.y += x < 0 ? 0 : m_stepY;
        break;
    case Motion::Jump:
        finger.x += 10 * m_stepX;
        finger.y += 10 * m_stepY;
        break;
    }
    finger.x = std::clamp(finger.x, 1.0, ScreenWidth - 1);
    finger.y = std::clamp(finger.y, 1.0, ScreenHeight - 1);
}

}  // namespace fuzz
