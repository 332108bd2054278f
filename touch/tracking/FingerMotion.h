// How far and how long a finger has moved or rested: the measures that taps, holds and navigation share.
#pragma once

#include "host/dg/Conversion.h"
#include "touch/Thresholds.h"
#include "touch/TouchState.h"

namespace touch {

// Whether a place is beyond the still limit from the finger's start, on either axis.
[[nodiscard]] constexpr bool IsAwayFromStart(const TouchState& finger, std::int32_t x, std::int32_t y) noexcept {
    return dg::AbsoluteDifference(finger.startX, x) > StillLimitPx ||
           dg::AbsoluteDifference(finger.startY, y) > StillLimitPx;
}

// Whether the finger has left its start, now or before; marks it when it has.
constexpr bool MarkIfMoving(TouchState& finger, std::int32_t x, std::int32_t y) noexcept {
    finger.isMoving = finger.isMoving || IsAwayFromStart(finger, x, y);
    return finger.isMoving;
}

// How long the finger has been down at its latest record, in milliseconds of the touch clock.
[[nodiscard]] constexpr std::int32_t GetDuration(const TouchState& finger) noexcept {
    return dg::WrapSubtract(finger.currentTime, finger.startTime);
}

}  // namespace touch
