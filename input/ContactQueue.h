// What a toolkit says of its contacts, put on the feeder's clock and kept until the clock gets there.
#pragma once

#include "input/Geometry.h"
#include "input/Thresholds.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace input {

// Whether frames come at a fixed step of time or for every report of the toolkit.
enum class Feeding : std::uint8_t { FixedStep, EveryReport };

// Times are microseconds of the feeder's clock.
struct ContactEvent {
    enum class Kind : std::uint8_t { Land, Move, Lift, Cancel };

    Kind kind = Kind::Move;
    std::uint64_t contact = 0;  // each landing has a number of its own, from 1
    std::int64_t id = 0;        // the toolkit's
    std::int64_t time = 0;      // when it takes effect
    std::int64_t stamp = 0;     // when it happened: later for a finger that lifts in motion
    Place place;
};

class ContactQueue {
public:
    // `zeroMs` is the toolkit's time at which the feeder's clock is 0; not finite: the first landing's.
    ContactQueue(Feeding feeding, double zeroMs);

    // The toolkit's contacts; `clock` is the feeder's, whose steps up to it are over. A time that is not finite is that
    // of the report before. A place that is not a number is the contact's last one; a landing has it as 0. Contacts
    // that did not land here, or landed as the eleventh, are ignored.
    void Down(std::int64_t id, Place place, double ms, std::int64_t clock);
    void Move(std::int64_t id, Place place, double ms, std::int64_t clock);
    void Up(std::int64_t id, Place place, double ms, std::int64_t clock);
    void Cancel(std::int64_t id, double ms, std::int64_t clock);
    void CancelAll(std::int64_t clock);
    // Forgets contacts and events.
    void Clear() noexcept;

    // The host's time has gone on by so many microseconds, not negative.
    void Pass(std::int64_t elapsed) noexcept;
    // How far the clock may go: to the latest report, but not past a finger that is moving; further once the grace is
    // over, or at once while there is no contact.
    [[nodiscard]] std::int64_t GetHorizon() const noexcept;
    // The contacts that have landed and not lifted, as far as the toolkit has said.
    [[nodiscard]] std::size_t GetContactCount() const noexcept { return m_contactCount; }

    // The events by time; those of one time as they came. Null when there is none.
    [[nodiscard]] const ContactEvent* GetFirst() const noexcept;
    void RemoveFirst() noexcept { ++m_first; }
    // The next movement of a contact; null when none waits.
    [[nodiscard]] const ContactEvent* FindMove(std::uint64_t contact) const noexcept;
    // Whether more events came than there is room for, since the last question: those fingers are to be cancelled.
    [[nodiscard]] bool TakeOverflow() noexcept;

private:
    struct Contact {
        std::int64_t id = 0;
        std::uint64_t number = 0;    // 0: none
        std::int64_t moved = 0;      // when it came to its place
        std::int64_t confirmed = 0;  // when it was last said to be there
        Place place;
    };

    Contact* Find(std::int64_t id) noexcept;
    std::int64_t TimeOf(double ms, std::int64_t clock) noexcept;
    void BeginTouch(std::int64_t clock) noexcept;
    void MoveTo(Contact& contact, Place place, std::int64_t time, std::int64_t clock);
    void Lift(Contact& contact, std::int64_t time);
    void End(Contact& contact, ContactEvent::Kind kind, std::int64_t time, std::int64_t stamp);
    void Add(const ContactEvent& event);

    Feeding m_feeding;
    std::array<Contact, MaxContacts> m_contacts{};
    std::size_t m_contactCount = 0;
    std::uint64_t m_landings = 0;
    std::vector<ContactEvent> m_events;  // those before m_first are over
    std::size_t m_first = 0;
    bool m_overflow = false;
    std::int64_t m_ended = 0;  // the latest time at which a contact ends

    std::int64_t m_latest = 0;     // the latest report
    std::int64_t m_latestRaw = 0;  // the same on the toolkit's clock
    std::int64_t m_offset = 0;     // what the feeder's clock is ahead of the toolkit's
    std::int64_t m_shift = 0;      // the part of it that late reports have added in this touch
    std::int64_t m_quiet = 0;      // host time since the latest report
    bool m_reported = false;       // since the host's time went on
    bool m_started = false;        // whether there was a report at all
};

}  // namespace input
