// Which records a frame has. Tested by tests/input/FeederFramesTest.cpp.
#include "input/FrameMaker.h"

#include <algorithm>
#include <cstddef>
#include <limits>

namespace input {
namespace {

constexpr std::int64_t LargestId = std::numeric_limits<std::int32_t>::max();
constexpr std::int64_t LargestTimeMs = std::numeric_limits<std::int32_t>::max();

std::int64_t WholeMs(std::int64_t us) noexcept {
    return (us - (((us % UsPerMs) + UsPerMs) % UsPerMs)) / UsPerMs;
}

}  // namespace

FrameMaker::FrameMaker(Feeding feeding, RecordIds ids, std::int32_t touchStartMs)
    : m_feeding(feeding), m_ids(ids), m_touchStartMs(std::max<std::int64_t>(1, touchStartMs)) {}

std::optional<MadeFrame> FrameMaker::MakeStep(ContactQueue& queue, const Geometry& geometry, std::int64_t clock) {
    if (m_cancelling == Cancelling::Lift) {
        LiftCancelled(clock);
        return Make(&queue, geometry, clock, MsAt(clock));
    }
    Changes changes;
    for (const ContactEvent* event = queue.GetFirst(); event != nullptr && event->time <= clock;
         event = queue.GetFirst()) {
        if (!Apply(*event, changes)) {
            break;
        }
        queue.RemoveFirst();
    }
    if (!HasFingers()) {
        return std::nullopt;
    }
    if (m_cancelling == Cancelling::Rest) {
        m_cancelling = Cancelling::Lift;
        return Make(&queue, geometry, clock, m_lastMs);
    }
    return Make(&queue, geometry, clock, changes.stamp ? MsAt(*changes.stamp) : MsAt(clock));
}

std::optional<MadeFrame> FrameMaker::MakeReport(ContactQueue& queue, const Geometry& geometry) {
    const std::int64_t time = queue.GetFirst()->time;
    Changes changes;
    bool hasChanges = false;
    for (const ContactEvent* event = queue.GetFirst(); event != nullptr && event->time == time;
         event = queue.GetFirst()) {
        if (!Apply(*event, changes)) {
            break;
        }
        hasChanges = hasChanges || Find(event->contact) != nullptr;
        queue.RemoveFirst();
        if (IsCancelling()) {
            return std::nullopt;
        }
    }
    if (!hasChanges) {
        return std::nullopt;
    }
    return Make(nullptr, geometry, time, MsAt(time));
}

std::optional<MadeFrame> FrameMaker::MakeRest(const Geometry& geometry, std::int64_t clock) {
    if (m_cancelling == Cancelling::Lift) {
        LiftCancelled(clock);
        return Make(nullptr, geometry, clock, MsAt(clock));
    }
    if (m_cancelling == Cancelling::Rest) {
        m_cancelling = Cancelling::Lift;
        return Make(nullptr, geometry, clock, m_lastMs);
    }
    if (!HasFingers() || clock / UsPerMs - m_lastFrame / UsPerMs < StepUs / UsPerMs) {
        return std::nullopt;
    }
    return Make(nullptr, geometry, clock, MsAt(clock));
}

bool FrameMaker::HasFingers() const noexcept {
    return std::any_of(m_fingers.begin(), m_fingers.end(), [](const Finger& f) { return f.state != State::Free; });
}

void FrameMaker::CancelAll() noexcept {
    for (Finger& finger : m_fingers) {
        finger.isCancelled = finger.state != State::Free;
    }
    m_cancelling = HasFingers() ? Cancelling::Rest : Cancelling::No;
}

void FrameMaker::Clear() noexcept {
    m_fingers.fill({});
    m_cancelling = Cancelling::No;
}

// False: the event has to wait for the next frame.
bool FrameMaker::Apply(const ContactEvent& event, Changes& changes) {
    if (IsCancelling() && event.kind != ContactEvent::Kind::Cancel) {
        return false;
    }
    switch (event.kind) {
    case ContactEvent::Kind::Land: return Land(event, changes);
    case ContactEvent::Kind::Lift: return Lift(event, changes);
    case ContactEvent::Kind::Cancel: return Cancel(event, changes);
    case ContactEvent::Kind::Move: break;
    }
    if (Finger* finger = Find(event.contact)) {
        finger->place = event.place;
        finger->time = event.time;
    }
    return true;
}

bool FrameMaker::Land(const ContactEvent& event, Changes& changes) {
    const auto place = std::find_if(m_fingers.begin(), m_fingers.end(),
                                    [](const Finger& finger) { return finger.state == State::Free; });
    const bool mayJoin = m_feeding == Feeding::EveryReport || (!changes.hasLifts && !changes.isFirst);
    if (place == m_fingers.end() || !mayJoin) {
        return false;
    }
    if (!HasFingers()) {
        changes.isFirst = true;
        BeginRecordTimes(event.time);
    }
    const std::optional<std::int32_t> id = FreeId(event);
    if (!id) {
        return true;
    }
    *place = {State::Landing, false, *id, event.contact, event.time, event.place, {}, MsAt(event.stamp)};
    changes.hasLandings = true;
    changes.stamp = std::max(changes.stamp.value_or(event.stamp), event.stamp);
    return true;
}

bool FrameMaker::Lift(const ContactEvent& event, Changes& changes) {
    Finger* finger = Find(event.contact);
    if (finger == nullptr) {
        return true;
    }
    const bool mayJoin = m_feeding == Feeding::EveryReport ? finger->state != State::Landing : !changes.hasLandings;
    if (!mayJoin) {
        return false;
    }
    finger->state = State::Lifting;
    finger->place = event.place;
    finger->time = event.time;
    changes.hasLifts = true;
    changes.stamp = std::max(changes.stamp.value_or(event.stamp), event.stamp);
    return true;
}

bool FrameMaker::Cancel(const ContactEvent& event, const Changes& changes) {
    Finger* finger = Find(event.contact);
    if (finger == nullptr) {
        return true;
    }
    if (changes.hasLandings || changes.hasLifts) {
        return false;
    }
    finger->isCancelled = true;
    m_cancelling = Cancelling::Rest;
    return true;
}

// The record time goes ahead until no finger of the touch is young enough for a tap.
void FrameMaker::LiftCancelled(std::int64_t clock) {
    std::int64_t earliestMs = 0;
    for (Finger& finger : m_fingers) {
        if (finger.state == State::Free) {
            continue;
        }
        earliestMs = std::max(earliestMs, finger.landedMs + CancelledTouchMs);
        finger.state = finger.isCancelled ? State::Lifting : finger.state;
    }
    m_touchZero -= std::max<std::int64_t>(0, earliestMs - MsAt(clock)) * UsPerMs;
    m_cancelling = Cancelling::No;
}

FrameMaker::Finger* FrameMaker::Find(std::uint64_t contact) noexcept {
    const auto found = std::find_if(m_fingers.begin(), m_fingers.end(), [&](const Finger& finger) {
        return finger.state != State::Free && finger.contact == contact;
    });
    return found == m_fingers.end() ? nullptr : &*found;
}

// Numbers count on during a touch, because a component takes a number that comes again for the finger that had it. It
// has room for ten; after that they are used anew, the oldest first.
std::optional<std::int32_t> FrameMaker::FreeId(const ContactEvent& event) {
    const auto isTaken = [&](std::int32_t id) {
        return std::any_of(m_fingers.begin(), m_fingers.end(),
                           [&](const Finger& finger) { return finger.state != State::Free && finger.id == id; });
    };
    if (m_ids == RecordIds::Own) {
        const auto own = static_cast<std::int32_t>(event.id & LargestId);
        return isTaken(own) ? std::nullopt : std::optional(own);
    }
    m_nextId = HasFingers() ? m_nextId : 0;
    const auto count = static_cast<std::int32_t>(MaxContacts);
    while (isTaken(m_nextId % count)) {
        m_nextId = (m_nextId + 1) % count;
    }
    const std::int32_t id = m_nextId;
    m_nextId = (m_nextId + 1) % count;
    return id;
}

std::int64_t FrameMaker::MsAt(std::int64_t time) const noexcept {
    return std::clamp(m_touchStartMs + WholeMs(time - m_touchZero), std::max<std::int64_t>(1, m_lastMs), LargestTimeMs);
}

void FrameMaker::BeginRecordTimes(std::int64_t time) noexcept {
    if (MsAt(time) > LastTouchStartMs) {
        m_touchZero = time;
        m_touchStartMs = FirstTouchStartMs;
        m_lastMs = 0;
    }
}

MadeFrame FrameMaker::Make(const ContactQueue* queue, const Geometry& geometry, std::int64_t clock, std::int64_t ms) {
    MadeFrame made;
    auto record = made.frame.records.begin();
    for (Finger& finger : m_fingers) {
        if (finger.state == State::Free) {
            continue;
        }
        finger.pixel = NextPixel(finger, queue, geometry, clock);
        *record = {finger.id, finger.pixel.x, finger.pixel.y, static_cast<std::int32_t>(ms), workflow::TouchMove};
        if (finger.state == State::Landing) {
            record->flags = workflow::TouchDown;
            finger.state = State::Down;
        } else if (finger.state == State::Lifting) {
            record->flags = workflow::TouchUp;
            made.isCancelled = made.isCancelled || finger.isCancelled;
            finger = {};
        }
        ++record;
    }
    made.frame.count = static_cast<std::int32_t>(record - made.frame.records.begin());
    m_lastMs = ms;
    m_lastFrame = clock;
    return made;
}

Pixel FrameMaker::NextPixel(const Finger& finger, const ContactQueue* queue, const Geometry& geometry,
                            std::int64_t clock) const {
    if (finger.isCancelled) {
        return finger.pixel;
    }
    if (queue == nullptr || finger.state != State::Down) {
        return PixelOf(geometry, finger.place);
    }
    const ContactEvent* next = queue->FindMove(finger.contact);
    return PixelOf(geometry, next == nullptr
                                 ? finger.place
                                 : Between(finger.place, next->place, clock - finger.time, next->time - finger.time));
}

}  // namespace input
