// Recordings begin in the middle of touches and have gaps. Fingers that must have been down at the start, or have
// landed or lifted in a gap, are found by what the events after it say.
#include "replay/recording/SlotTracker.h"

#include <linux/input-event-codes.h>

namespace replay {

namespace {

std::optional<std::int32_t> ValueOf(const std::map<int, std::int32_t>& values, int code) {
    const auto found = values.find(code);
    return found == values.end() ? std::nullopt : std::optional(found->second);
}

}  // namespace

SlotTracker::SlotTracker(const std::map<int, std::int32_t>& initialValues, const DeviceEvents& events)
    : m_current(ValueOf(initialValues, ABS_MT_SLOT).value_or(0)),
      m_pointerX(ValueOf(initialValues, ABS_X)),
      m_pointerY(ValueOf(initialValues, ABS_Y)) {
    FindFingersAtStart(events);
}

// A finger was down from the start in a slot whose first tracking id is a lift, and in one that gave a coordinate in a
// report before its first tracking id. The first coordinates it gave are the best guess for the time before.
void SlotTracker::FindFingersAtStart(const DeviceEvents& events) {
    struct Start {
        Slot slot;            // the coordinates before the first tracking id
        bool moved = false;   // in a report that has ended
        bool closed = false;  // the first tracking id came
        bool isDown = false;
    };
    std::map<std::int32_t, Start> starts;
    std::vector<std::int32_t> placed;  // slots that gave a coordinate since the last end of a report
    std::int32_t current = m_current;
    for (const DeviceEvent& event : events) {
        if (event.type == EV_SYN && event.code == SYN_DROPPED) {
            break;  // what lies behind a gap says nothing about the start
        }
        if (event.type == EV_SYN && event.code == SYN_REPORT) {
            for (const std::int32_t number : placed) {
                starts[number].moved = true;
            }
            placed.clear();
        }
        if (event.type != EV_ABS) {
            continue;
        }
        if (event.code == ABS_MT_SLOT) {
            current = event.value;
        }
        Start& start = starts[current];
        if (start.closed) {
            continue;
        }
        if (event.code == ABS_MT_TRACKING_ID) {
            start.closed = true;
            start.isDown = event.value < 0 || start.moved;
        } else if (event.code == ABS_MT_POSITION_X) {
            start.slot.x = start.slot.x.value_or(event.value);
            placed.push_back(current);
        } else if (event.code == ABS_MT_POSITION_Y) {
            start.slot.y = start.slot.y.value_or(event.value);
            placed.push_back(current);
        }
    }
    for (const auto& [number, start] : starts) {
        const bool hasPlace = (start.slot.x || m_pointerX) && (start.slot.y || m_pointerY);
        if (hasPlace && (start.isDown || (!start.closed && start.moved))) {
            m_slots[number] = {m_nextInventedId++, start.slot.x, start.slot.y, false, false};
        }
    }
}

bool SlotTracker::Apply(const DeviceEvent& event) {
    if (event.type == EV_SYN && event.code == SYN_DROPPED) {
        m_dropping = true;
        m_eventsLost = true;
    } else if (event.type == EV_SYN && event.code == SYN_REPORT) {
        const bool counts = !m_dropping;
        EndReport();
        return counts;
    } else if (event.type == EV_ABS) {
        ApplyAxis(event);
    } else if (event.type == EV_KEY && event.code == BTN_TOUCH && event.value == 0 && m_eventsLost && !m_dropping) {
        // The last finger is up, so those whose lifts were lost in the gap are lifted here.
        for (auto& [number, slot] : m_slots) {
            slot.trackingId.reset();
        }
        m_areContactsOld = true;
        m_eventsLost = false;
    }
    return false;
}

void SlotTracker::ApplyAxis(const DeviceEvent& event) {
    if (event.code == ABS_MT_SLOT) {
        m_current = event.value;  // also in a gap: the device does not repeat the slot after it
    }
    if (m_dropping) {
        return;
    }
    Slot& slot = m_slots[m_current];
    m_told.insert(m_current);
    m_areContactsOld = true;
    switch (event.code) {
    case ABS_MT_TRACKING_ID:
        slot.trackingId = event.value < 0 ? std::nullopt : std::optional(event.value);
        slot.identified = true;
        break;
    case ABS_MT_POSITION_X:
        slot.x = event.value;
        slot.placed = true;
        break;
    case ABS_MT_POSITION_Y:
        slot.y = event.value;
        slot.placed = true;
        break;
    case ABS_X: m_pointerX = event.value; break;
    case ABS_Y: m_pointerY = event.value; break;
    default: break;
    }
}

void SlotTracker::EndReport() {
    for (const std::int32_t number : m_told) {
        Slot& slot = m_slots[number];
        // A finger that moves without having landed has landed in the gap.
        if (m_eventsLost && slot.placed && !slot.identified && !slot.trackingId) {
            slot.trackingId = m_nextInventedId++;
        }
        slot.placed = false;
        slot.identified = false;
    }
    m_told.clear();
    m_dropping = false;
}

const std::vector<Contact>& SlotTracker::Contacts() {
    if (!m_areContactsOld) {
        return m_contacts;
    }
    m_areContactsOld = false;
    m_contacts.clear();
    for (const auto& [number, slot] : m_slots) {
        if (slot.trackingId) {
            m_contacts.push_back({number, *slot.trackingId, slot.x.value_or(m_pointerX.value_or(0)),
                                  slot.y.value_or(m_pointerY.value_or(0))});
        }
    }
    return m_contacts;
}

}  // namespace replay
