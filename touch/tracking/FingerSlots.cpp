// The slot table: every finger seen since the last reset, lifted ones included. It fills from the front and is cleared
// as a whole, so that the first free slot ends it. Decides where a finger is kept, whether it has left its start, and
// whether a one-finger touch has just begun or ended. Distances are measured from the start, so a slow drift counts.
// Tested by tests/component/FingersTest.cpp.
#include "host/dg/Conversion.h"
#include "touch/TouchWorkflow.h"
#include "touch/tracking/FingerMotion.h"

namespace touch {
namespace {

// By address and not by number: every frame asks several times, and the way back from a number costs as much as the
// search.
template <class Slots>
auto MatchIn(Slots& slots, int id) -> decltype(slots.data()) {
    for (auto& slot : slots) {
        if (slot.id == id || slot.id == FreeSlotId) {
            return &slot;
        }
    }
    return nullptr;
}

}  // namespace

int TouchWorkflow::GetMatchedSlotNumber(int id) const {
    const TouchState* slot = MatchSlot(id);
    return slot == nullptr ? -1 : static_cast<int>(slot - m_touchStates.data());
}

int TouchWorkflow::GetMatchedId(int slot) const {
    const auto index = static_cast<std::size_t>(slot);
    return index < m_touchStates.size() ? m_touchStates[index].id : FreeSlotId;
}

TouchState* TouchWorkflow::MatchSlot(int id) {
    return MatchIn(m_touchStates, id);
}

const TouchState* TouchWorkflow::MatchSlot(int id) const {
    return MatchIn(m_touchStates, id);
}

bool TouchWorkflow::GetFingerIsMoving(int id, int x, int y, bool byIndex) {
    if (x == 0 || y == 0) {
        return false;
    }
    TouchState* finger = byIndex ? &m_touchStates.at(static_cast<std::size_t>(id)) : MatchSlot(id);
    return finger != nullptr && MarkIfMoving(*finger, x, y);
}

bool TouchWorkflow::IsHolding(int id, int x, int y, int now, int holdTime, bool byIndex) const {
    const TouchState* finger = byIndex ? &m_touchStates.at(static_cast<std::size_t>(id)) : MatchSlot(id);
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
