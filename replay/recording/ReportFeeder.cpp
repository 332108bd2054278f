// A finger is the same as long as its slot keeps its tracking id. What has gone is told before what is new, so that a
// full frame never loses a lift.
#include "replay/recording/ReportFeeder.h"

#include "input/Thresholds.h"

#include <algorithm>
#include <cstdint>

namespace replay {

namespace {

// The low half is what records have as their id.
std::int64_t NumberOf(const Contact& contact) {
    return (static_cast<std::int64_t>(contact.slot) << 32) | contact.trackingId;
}

bool Has(const std::vector<Contact>& contacts, const Contact& wanted) {
    return std::any_of(contacts.begin(), contacts.end(),
                       [&](const Contact& contact) { return NumberOf(contact) == NumberOf(wanted); });
}

}  // namespace

void ReportFeeder::Tell(const Report& report) {
    const double ms = static_cast<double>(report.timeUs) / static_cast<double>(input::UsPerMs);
    for (const Contact& contact : m_contacts) {
        if (!Has(report.contacts, contact)) {
            m_feeder.Lost(NumberOf(contact), ms);
        }
    }
    for (const Contact& contact : report.contacts) {
        const input::Place place = m_mapping.PlaceOf(contact.x, contact.y);
        if (Has(m_contacts, contact)) {
            m_feeder.Move(NumberOf(contact), place.x, place.y, ms);
        } else {
            m_feeder.Down(NumberOf(contact), place.x, place.y, ms);
        }
    }
    m_contacts = report.contacts;
}

}  // namespace replay
