// The slot table: every finger seen since the last reset, lifted ones included. Decides where a finger is kept, whether
// it has left its start, and whether a one-finger touch has just begun or ended. Distances are measured from the start,
// so a slow drift counts. Tested by tests/component/FingerSlotsTest.cpp.
#include "host/dg/Conversion.h"
#include "touch/FingerMotion.h"
#include "touch/TouchWorkflow.h"

namespace touch {
namespace {

constexpr int MoveFlag = 1;
constexpr int DownFlag = 2;
constexpr int UpFlag = 4;

}  // namespace

int TouchWorkflow::GetMatchedSlotNumber(int id) const {
    int firstFree = -1;
    for (std::size_t i = 0; i < m_touchStates.size(); ++i) {
        if (m_touchStates[i].id == id) {
            return static_cast<int>(i);
        }
        if (firstFree < 0 && m_touchStates[i].id == FreeSlotId) {
            firstFree = static_cast<int>(i);
        }
    }
    return firstFree;
}

int TouchWorkflow::GetMatchedId(int slot) const {
    const auto index = static_cast<std::size_t>(slot);
    return index < m_touchStates.size() ? m_touchStates[index].id : FreeSlotId;
}

TouchState* TouchWorkflow::FindSlot(int id) {
    const int slot = GetMatchedSlotNumber(id);
    return slot < 0 ? nullptr : &m_touchStates[static_cast<std::size_t>(slot)];
}

const TouchState* TouchWorkflow::FindSlot(int id) const {
    const int slot = GetMatchedSlotNumber(id);
    return slot < 0 ? nullptr : &m_touchStates[static_cast<std::size_t>(slot)];
}

TSType TouchWorkflow::GetTouchState(int flags) {
    if ((flags & DownFlag) != 0) {
        return TSDown;
    }
    if ((flags & MoveFlag) != 0) {
        return TSMove;
    }
    return (flags & UpFlag) != 0 ? TSUp : TSNone;
}

bool TouchWorkflow::GetFingerIsMoving(int id, int x, int y, bool byIndex) {
    if (x == 0 || y == 0) {
        return false;
    }
    TouchState* finger = byIndex ? &m_touchStates.at(static_cast<std::size_t>(id)) : FindSlot(id);
    return finger != nullptr && MarkIfMoving(*finger, x, y);
}

bool TouchWorkflow::IsHolding(int id, int x, int y, int now, int holdTime, bool byIndex) const {
    const TouchState* finger = byIndex ? &m_touchStates.at(static_cast<std::size_t>(id)) : FindSlot(id);
    if (finger == nullptr || IsAwayFromStart(*finger, x, y)) {
        return false;
    }
    return holdTime <= 0 || dg::WrapSubtract(now, finger->startTime) > holdTime;
}

bool TouchWorkflow::GetFirstTouchDown() const {
    return dg::WrapSubtract(m_currentTime, m_touchDownTime) < RecentTouchMs;
}

bool TouchWorkflow::GetFirstTouchUp() const {
    return dg::WrapSubtract(m_currentTime, m_touchUpTime) < RecentTouchMs;
}

bool TouchWorkflow::GetTouchTappedNow() const {
    return GetFirstTouchDown() || GetFirstTouchUp();
}

}  // namespace touch
