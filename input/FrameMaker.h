// The fingers of a feeder, and the touch frames that are made of them.
#pragma once

#include "host/workflow/TouchFrame.h"
#include "input/ContactQueue.h"
#include "input/Geometry.h"
#include "input/Thresholds.h"

#include <array>
#include <cstdint>
#include <optional>

namespace input {

// Whose ids are in the records: small numbers from 0 in the order of landing, or the toolkit's own, their low 31 bits.
// A finger with an own id that another one has at the moment is left out.
enum class RecordIds : std::uint8_t { Numbered, Own };

struct MadeFrame {
    workflow::TouchFrame frame;
    bool isCancelled = false;  // its lifts are those of cancelled fingers
};

// Every finger has a frame in which it lands, and one in which it lifts. With a fixed step, the first finger of a touch
// lands alone, since a component begins afresh with it, and no frame has landings and lifts at once.
class FrameMaker {
public:
    // `touchStartMs` is the record time of the clock's 0.
    FrameMaker(Feeding feeding, RecordIds ids, std::int32_t touchStartMs);

    // Takes the events that are due at a step, and makes the frame of it; none when no finger is on the screen.
    [[nodiscard]] std::optional<MadeFrame> MakeStep(ContactQueue& queue, const Geometry& geometry, std::int64_t clock);
    // Takes the events of the first report, and makes the frame of it; none when they do not change a finger.
    [[nodiscard]] std::optional<MadeFrame> MakeReport(ContactQueue& queue, const Geometry& geometry);
    // The frame of resting fingers at a tick; none when the last frame is not a step old.
    [[nodiscard]] std::optional<MadeFrame> MakeRest(const Geometry& geometry, std::int64_t clock);
    // Whether events have to wait for the frames of a cancelled touch.
    [[nodiscard]] bool IsCancelling() const noexcept { return m_cancelling != Cancelling::No; }

    [[nodiscard]] bool HasFingers() const noexcept;
    void CancelAll() noexcept;
    // Forgets the fingers; no frame says so.
    void Clear() noexcept;

private:
    enum class State : std::uint8_t { Free, Landing, Down, Lifting };
    // A cancelled touch rests for a frame, so that nothing turns any more when the next one lifts it.
    enum class Cancelling : std::uint8_t { No, Rest, Lift };

    struct Finger {
        State state = State::Free;
        bool isCancelled = false;
        std::int32_t id = 0;        // of its records
        std::uint64_t contact = 0;  // the number of its landing
        std::int64_t time = 0;      // when it was at its place, on the feeder's clock
        Place place;                // of the latest event
        Pixel pixel;                // of the latest record
        std::int64_t landedMs = 0;  // record time of its landing
    };
    // What the events of one frame have done so far.
    struct Changes {
        bool hasLandings = false;
        bool hasLifts = false;
        bool isFirst = false;               // the touch begins with it
        std::optional<std::int64_t> stamp;  // the latest of a landing or a lift
    };

    bool Apply(const ContactEvent& event, Changes& changes);
    bool Land(const ContactEvent& event, Changes& changes);
    bool Lift(const ContactEvent& event, Changes& changes);
    bool Cancel(const ContactEvent& event, const Changes& changes);
    void LiftCancelled(std::int64_t clock);
    Finger* Find(std::uint64_t contact) noexcept;
    [[nodiscard]] std::optional<std::int32_t> FreeId(const ContactEvent& event);
    [[nodiscard]] std::int64_t MsAt(std::int64_t time) const noexcept;
    void BeginRecordTimes(std::int64_t time) noexcept;
    [[nodiscard]] MadeFrame Make(const ContactQueue* queue, const Geometry& geometry, std::int64_t clock,
                                 std::int64_t ms);
    [[nodiscard]] Pixel NextPixel(const Finger& finger, const ContactQueue* queue, const Geometry& geometry,
                                  std::int64_t clock) const;

    Feeding m_feeding;
    RecordIds m_ids;
    std::array<Finger, MaxContacts> m_fingers{};
    Cancelling m_cancelling = Cancelling::No;
    std::int32_t m_nextId = 0;
    std::int64_t m_touchZero = 0;  // the time whose record time is m_touchStartMs
    std::int64_t m_touchStartMs = 0;
    std::int64_t m_lastMs = 0;     // record time of the latest frame
    std::int64_t m_lastFrame = 0;  // its time on the feeder's clock
};

}  // namespace input
