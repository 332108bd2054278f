// How far a change of the fingers' span goes. Spans and widths are pixels.
#pragma once

#include "host/dg/Functions.h"
#include "touch/Thresholds.h"

#include <algorithm>

namespace touch {

// The travel of a perspective camera, forward when the fingers spread: the square of the change, so that a quick pinch
// goes further. In the unit of the step, which is the travel for a change of a tenth of the view's width at speed 1.
[[nodiscard]] inline double GetPinchTravel(double spanDelta, double viewWidth, double speed, double step) noexcept {
    const double pinch = spanDelta * PerspectiveSpanScale / std::max(MinReferenceWidthPx, viewWidth);
    if (pinch > 0) {
        return speed * (pinch * pinch) * step;
    }
    return -(pinch * pinch * step * speed);
}

// How many times larger an orthographic view shows the model: a power of two of the change since the pinch began.
[[nodiscard]] inline double GetPinchMagnification(double spanDelta, double viewWidth) noexcept {
    return dg::Exp2(spanDelta * OrthographicZoomExponent / std::max(MinReferenceWidthPx, viewWidth));
}

}  // namespace touch
