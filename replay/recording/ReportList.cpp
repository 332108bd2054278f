// Both a report and its changes are in the order of slots, so that one pass finds what has changed and a change finds
// its place at once.
#include "replay/recording/ReportList.h"

#include <algorithm>

namespace replay {

namespace {

constexpr std::int32_t Lifted = -1;

bool IsBefore(const Contact& a, const Contact& b) {
    return a.slot < b.slot;
}

}  // namespace

ReportList::ReportList(const std::vector<Report>& reports) {
    for (const Report& report : reports) {
        Add(report);
    }
}

void ReportList::Add(const Report& report) {
    auto old = m_last.contacts.begin();
    const auto oldEnd = m_last.contacts.end();
    const auto lift = [&] { m_changes.push_back({old++->slot, Lifted, 0, 0}); };
    for (const Contact& contact : report.contacts) {
        while (old != oldEnd && IsBefore(*old, contact)) {
            lift();
        }
        const bool isKnown = old != oldEnd && old->slot == contact.slot;
        if (!isKnown || *old != contact) {
            m_changes.push_back(contact);
        }
        old += isKnown ? 1 : 0;
    }
    while (old != oldEnd) {
        lift();
    }
    m_last = report;
    m_steps.push_back({report.timeUs, m_changes.size()});
}

ReportList::Iterator& ReportList::Iterator::operator++() {
    ++m_index;
    Apply();
    return *this;
}

void ReportList::Iterator::Apply() {
    if (m_index == m_list->m_steps.size()) {
        return;
    }
    const Step& step = m_list->m_steps[m_index];
    m_report.timeUs = step.timeUs;
    std::vector<Contact>& contacts = m_report.contacts;
    for (; m_nextChange < step.changesEnd; ++m_nextChange) {
        const Contact& change = m_list->m_changes[m_nextChange];
        const auto place = std::lower_bound(contacts.begin(), contacts.end(), change, IsBefore);
        const bool isKnown = place != contacts.end() && place->slot == change.slot;
        if (change.trackingId == Lifted) {
            contacts.erase(place);
        } else if (isKnown) {
            *place = change;
        } else {
            contacts.insert(place, change);
        }
    }
}

}  // namespace replay
