// The state of a multi-touch protocol B device, event by event.
#pragma once

#include "replay/recording/DeviceText.h"
#include "replay/recording/RecordingReader.h"

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <vector>

namespace replay {

// Ids of fingers whose landing the recording does not hold. Devices number their fingers from 0 to 65535.
inline constexpr std::int32_t FirstInventedId = 0x10000;

// Follows the slots of a device. Values that a slot does not repeat stay as they were, also from one finger to the
// next.
class SlotTracker {
public:
    // The initial values give the current slot and the pointer's position, by axis code. The events are looked through
    // once for fingers that are down from the start: those that move or lift without having landed.
    SlotTracker(const std::map<int, std::int32_t>& initialValues, const DeviceEvents& events);

    // Takes an event in; types and codes without a meaning for touch are ignored. True when it ends a report that
    // counts: one without lost events.
    bool Apply(const DeviceEvent& event);

    // The fingers that are down, by ascending slot. A coordinate that never came is the pointer's, else 0.
    // Valid until the next event.
    [[nodiscard]] const std::vector<Contact>& Contacts();

private:
    struct Slot {
        std::optional<std::int32_t> trackingId;  // without a value no finger is down
        std::optional<std::int32_t> x;
        std::optional<std::int32_t> y;
        bool placed = false;      // a coordinate came since the last end of a report
        bool identified = false;  // a tracking id or a lift came since the last end of a report
    };

    void FindFingersAtStart(const DeviceEvents& events);
    void ApplyAxis(const DeviceEvent& event);
    void EndReport();

    std::map<std::int32_t, Slot> m_slots;
    std::set<std::int32_t> m_told;    // the slots that an event came for since the last end of a report
    std::vector<Contact> m_contacts;  // as last asked for
    bool m_areContactsOld = true;
    std::int32_t m_current = 0;              // the slot that values are for
    std::optional<std::int32_t> m_pointerX;  // the device's single-touch coordinates
    std::optional<std::int32_t> m_pointerY;
    std::int32_t m_nextInventedId = FirstInventedId;
    bool m_dropping = false;    // events are passed over until the report with the gap has ended
    bool m_eventsLost = false;  // there was a gap, so landings and lifts may be missing
};

}  // namespace replay
