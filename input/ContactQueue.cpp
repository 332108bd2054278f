// How event times become times of the feeder. A touch begins on a step of the clock, so that it is sampled alike
// whenever it comes; from there on the toolkit's time stamps say when things happen, however late they arrive.
// Tested by tests/input/FeederClockTest.cpp.
#include "input/ContactQueue.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>

namespace input {
namespace {

std::int64_t Microseconds(double ms) noexcept {
    return std::llround(std::clamp(ms, -FarthestTimeMs, FarthestTimeMs) * static_cast<double>(UsPerMs));
}

// The first step at or after a time.
std::int64_t StepAt(std::int64_t time) noexcept {
    const std::int64_t past = ((time % StepUs) + StepUs) % StepUs;
    return past == 0 ? time : time + StepUs - past;
}

Place KnownPlace(const Place& place, const Place& last) noexcept {
    return {std::isnan(place.x) ? last.x : place.x, std::isnan(place.y) ? last.y : place.y};
}

bool IsBeyondSlack(const Place& a, const Place& b) noexcept {
    return std::abs(a.x - b.x) > LiftSlackPx || std::abs(a.y - b.y) > LiftSlackPx;
}

}  // namespace

ContactQueue::ContactQueue(Feeding feeding, double zeroMs) : m_feeding(feeding), m_started(std::isfinite(zeroMs)) {
    m_events.reserve(UsualWaitingEvents);
    if (m_started) {
        m_latestRaw = Microseconds(zeroMs);
        m_offset = -m_latestRaw;
    }
}

void ContactQueue::Down(std::int64_t id, Place place, double ms, std::int64_t clock) {
    std::int64_t time = TimeOf(ms, clock);
    if (Contact* lost = Find(id)) {
        Lift(*lost, std::max(time, lost->moved));
    }
    if (m_contactCount == MaxContacts) {
        return;
    }
    m_latest = std::max(m_latest, m_ended);  // a landing before it could wait for room that only comes later
    if (m_contactCount == 0) {
        BeginTouch(clock);
        time = m_latest;
    }
    time = std::max(time, m_ended);
    Contact& contact =
        *std::find_if(m_contacts.begin(), m_contacts.end(), [](const Contact& c) { return c.number == 0; });
    contact = {id, ++m_landings, time, time, KnownPlace(place, {})};
    ++m_contactCount;
    Add({ContactEvent::Kind::Land, contact.number, id, time, time, contact.place});
}

void ContactQueue::Move(std::int64_t id, Place place, double ms, std::int64_t clock) {
    if (Contact* contact = Find(id)) {
        MoveTo(*contact, KnownPlace(place, contact->place), TimeOf(ms, clock), clock);
    }
}

void ContactQueue::Up(std::int64_t id, Place place, double ms, std::int64_t clock) {
    Contact* contact = Find(id);
    if (contact == nullptr) {
        return;
    }
    const std::int64_t time = std::max(TimeOf(ms, clock), contact->moved);
    const Place known = KnownPlace(place, contact->place);
    if (m_feeding == Feeding::EveryReport) {
        contact->place = known;
    } else if (IsBeyondSlack(known, contact->place)) {
        MoveTo(*contact, known, time, clock);
    }
    if (contact->number != 0) {  // it went if there was no room for the movement
        Lift(*contact, time);
    }
}

void ContactQueue::Cancel(std::int64_t id, double ms, std::int64_t clock) {
    if (Contact* contact = Find(id)) {
        const std::int64_t time = std::max(TimeOf(ms, clock), contact->moved);
        End(*contact, ContactEvent::Kind::Cancel, time, time);
    }
}

void ContactQueue::CancelAll(std::int64_t clock) {
    m_latest = std::max(m_latest, clock);
    m_reported = m_reported || m_contactCount > 0;
    for (Contact& contact : m_contacts) {
        if (contact.number != 0) {
            End(contact, ContactEvent::Kind::Cancel, m_latest, m_latest);  // no movement is later
        }
    }
}

void ContactQueue::Clear() noexcept {
    m_contacts.fill({});
    m_contactCount = 0;
    m_events.clear();
    m_first = 0;
}

void ContactQueue::Pass(std::int64_t elapsed) noexcept {
    m_quiet = m_reported ? 0 : m_quiet + elapsed;
    m_reported = false;
    m_events.erase(m_events.begin(), m_events.begin() + static_cast<std::ptrdiff_t>(m_first));
    m_first = 0;
}

std::int64_t ContactQueue::GetHorizon() const noexcept {
    if (m_contactCount == 0) {
        return m_latest + m_quiet;
    }
    if (m_feeding == Feeding::EveryReport || m_quiet > GraceUs) {
        return m_latest + std::max<std::int64_t>(0, m_quiet - GraceUs);
    }
    std::int64_t horizon = m_latest;
    for (const Contact& contact : m_contacts) {
        if (contact.number != 0 && m_latest - contact.moved <= InMotionUs) {
            horizon = std::min(horizon, contact.moved);
        }
    }
    return horizon;
}

const ContactEvent* ContactQueue::GetFirst() const noexcept {
    return m_first < m_events.size() ? &m_events[m_first] : nullptr;
}

const ContactEvent* ContactQueue::FindMove(std::uint64_t contact) const noexcept {
    const auto first = m_events.begin() + static_cast<std::ptrdiff_t>(m_first);
    const auto found = std::find_if(first, m_events.end(), [&](const ContactEvent& event) {
        return event.contact == contact && event.kind == ContactEvent::Kind::Move;
    });
    return found == m_events.end() ? nullptr : &*found;
}

bool ContactQueue::TakeOverflow() noexcept {
    const bool overflow = m_overflow;
    m_overflow = false;
    return overflow;
}

ContactQueue::Contact* ContactQueue::Find(std::int64_t id) noexcept {
    const auto found = std::find_if(m_contacts.begin(), m_contacts.end(),
                                    [&](const Contact& contact) { return contact.number != 0 && contact.id == id; });
    return found == m_contacts.end() ? nullptr : &*found;
}

std::int64_t ContactQueue::TimeOf(double ms, std::int64_t clock) noexcept {
    const std::int64_t raw = std::isfinite(ms) ? Microseconds(ms) : m_latestRaw;
    if (!m_started) {
        m_started = true;
        m_offset = clock + StepUs - raw;
    }
    const std::int64_t newest = std::max(m_latest, clock);
    std::int64_t time = raw + m_offset;
    if (time > newest + GapUs || time < newest - GapUs) {
        // A pause, or another clock.
        const std::int64_t bounded = time > newest ? newest + GapUs : newest;
        m_offset += bounded - time;
        time = bounded;
    } else if (m_contactCount > 0 && time < clock - LateUs) {
        const std::int64_t spacing = std::clamp<std::int64_t>(raw - m_latestRaw, 0, BridgeUs);
        const std::int64_t shift = clock + spacing - time;
        if (m_shift + shift <= MaxShiftUs) {
            m_shift += shift;
            m_offset += shift;
            time += shift;
        }
    }
    m_latestRaw = raw;
    time = std::max(time, clock);
    m_latest = std::max(m_latest, time);
    m_reported = true;
    return time;
}

void ContactQueue::BeginTouch(std::int64_t clock) noexcept {
    const std::int64_t time = m_feeding == Feeding::FixedStep ? StepAt(std::max(m_latest, clock + StepUs)) : m_latest;
    m_offset += time - (m_latestRaw + m_offset);
    m_latest = time;
    m_shift = 0;
}

void ContactQueue::MoveTo(Contact& contact, Place place, std::int64_t time, std::int64_t clock) {
    time = std::max(time, contact.moved);
    if (place == contact.place) {
        contact.confirmed = std::max(contact.confirmed, time);
        return;
    }
    if (m_feeding == Feeding::FixedStep) {
        const std::int64_t rested = std::min(time, std::max({contact.confirmed, time - BridgeUs, clock}));
        if (rested > contact.moved) {
            Add({ContactEvent::Kind::Move, contact.number, contact.id, rested, rested, contact.place});
        }
        if (contact.number == 0) {
            return;  // forgotten: there was no room
        }
    }
    contact.moved = time;
    contact.confirmed = time;
    contact.place = place;
    Add({ContactEvent::Kind::Move, contact.number, contact.id, time, time, place});
}

// In motion, at once after the last movement, so that a step at just that time still has it.
void ContactQueue::Lift(Contact& contact, std::int64_t time) {
    const bool isInMotion = m_feeding == Feeding::FixedStep && time - contact.moved <= InMotionUs;
    End(contact, ContactEvent::Kind::Lift, isInMotion ? contact.moved + 1 : time, time);
}

void ContactQueue::End(Contact& contact, ContactEvent::Kind kind, std::int64_t time, std::int64_t stamp) {
    const ContactEvent event{kind, contact.number, contact.id, time, stamp, contact.place};
    contact = {};
    --m_contactCount;
    m_ended = std::max(m_ended, time);
    Add(event);
}

// Events come nearly in order, so that their place is near the end.
void ContactQueue::Add(const ContactEvent& event) {
    if (m_events.size() - m_first >= MaxWaitingEvents) {
        Clear();
        m_overflow = true;
        return;
    }
    auto place = m_events.end();
    while (place != m_events.begin() + static_cast<std::ptrdiff_t>(m_first) && std::prev(place)->time > event.time) {
        --place;
    }
    m_events.insert(place, event);
}

}  // namespace input
