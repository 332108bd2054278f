// Every limit of the feeder, with its unit and whether the limit itself counts.
#pragma once

#include <cstddef>
#include <cstdint>

namespace input {

// Times are microseconds: what toolkits send, rounded, so that sums and comparisons are exact.
inline constexpr std::int64_t UsPerMs = 1000;

// Clock --------------------------------------------------------------------------------------------------------------

// From one frame of a touch to the next, and from tick to tick.
inline constexpr std::int64_t StepUs = 10 * UsPerMs;
// Fingers that say nothing for so long rest: from here on the clock goes on without them, this much behind the host.
// A single Advance counts for at most as much.
inline constexpr std::int64_t GraceUs = 120 * UsPerMs;
// Without a report a gap of time counts for at most so much: the rest of a pause is cut out.
inline constexpr std::int64_t GapUs = 1000 * UsPerMs;
// A report that is behind the clock by up to this, included, counts as at the clock; one further behind moves all later
// reports of the touch ...
inline constexpr std::int64_t LateUs = 25 * UsPerMs;
// ... which may move by this much altogether, included; what is late beyond it counts as at the clock.
inline constexpr std::int64_t MaxShiftUs = 1000 * UsPerMs;
// Steps of one Advance; the others follow in the next one.
inline constexpr int MaxStepsPerAdvance = 200;
// Times further from 0 count as so far: 285 years.
inline constexpr double FarthestTimeMs = 9e12;

// Fingers ------------------------------------------------------------------------------------------------------------

// Contacts at once; further ones are dropped until they lift. As many as a frame has records.
inline constexpr std::size_t MaxContacts = 10;
// Between two reports of a finger this far apart, or nearer, it moved evenly; before that it rested.
inline constexpr std::int64_t BridgeUs = 100 * UsPerMs;
// A finger that moved so recently, limit included, is waited for; and lifted then, it lifted in motion.
inline constexpr std::int64_t InMotionUs = 25 * UsPerMs;
// Per axis; a lift that is further from the last place than this is a movement of its own.
inline constexpr double LiftSlackPx = 4;
// Places further out, in pixels, count as so far.
inline constexpr double FarthestPx = 1e7;
// Contact events between two Advances; one more forgets them and cancels every finger.
inline constexpr std::size_t MaxWaitingEvents = 4096;
// Of these there is always room, so that nothing is allocated at all.
inline constexpr std::size_t UsualWaitingEvents = 256;
// Milliseconds from the last landing to the lift of a cancelled touch, at least: as long as no tap is.
inline constexpr std::int64_t CancelledTouchMs = 300;

// Record times -------------------------------------------------------------------------------------------------------

// A touch that would begin past this, in milliseconds, begins at the one below it: record times have 32 bits.
inline constexpr std::int64_t LastTouchStartMs = std::int64_t{1} << 30;
// Above 0, which means that there is no value.
inline constexpr std::int32_t FirstTouchStartMs = 1000;

// Mouse --------------------------------------------------------------------------------------------------------------

// Per axis, from where the finger landed; strictly more begins a drag.
inline constexpr double DragStartPx = 4;
// After the last finger has lifted; for strictly less, mouse events are the system's echo of the touch.
inline constexpr std::int64_t EchoTailUs = 500 * UsPerMs;

}  // namespace input
