// How hands that are held off their start steer explore flight. Displacements and sizes are pixels.
#pragma once

#include "touch/Thresholds.h"

#include <cmath>

namespace touch {

// The whole displacement, not only what is beyond the dead zone; 0 within it.
[[nodiscard]] constexpr double BeyondDeadZone(double start, double current, double deadZone) noexcept {
    return current < start - deadZone || current > start + deadZone ? current - start : 0.0;
}

// What of a displacement is outside a band on both sides of 0.
[[nodiscard]] constexpr double ReduceByBand(double displacement, double band) noexcept {
    if (displacement > band) {
        return displacement - band;
    }
    return displacement < -band ? displacement + band : 0.0;
}

// The turn of a step of that many seconds, in radians: it grows with the square of the displacement, against its
// direction.
[[nodiscard]] inline double GetFlightTurn(double displacement, double viewSize, double seconds) noexcept {
    const double perPixel = 1 / (viewSize * 0.5);
    return std::abs(displacement) * displacement * (perPixel * perPixel) * (seconds * TurnGain);
}

}  // namespace touch
