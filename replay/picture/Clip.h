// Cutting lines and areas at a rectangle, so that no renderer meets coordinates far outside the picture.
#pragma once

#include "host/dg/Point.h"

#include <optional>
#include <utility>
#include <vector>

namespace replay {

struct ClipRect {
    double left = 0;
    double bottom = 0;
    double right = 0;
    double top = 0;
};

// The part of a line inside the rectangle; no value when there is none or a coordinate is not finite.
[[nodiscard]] std::optional<std::pair<dg::DPoint2D, dg::DPoint2D>>
ClipLine(const dg::DPoint2D& from, const dg::DPoint2D& to, const ClipRect& rect);

// The part of an area inside the rectangle; empty when there is none or a coordinate is not finite. Where a hollow
// outline falls apart, the pieces stay joined along the rectangle's border.
[[nodiscard]] std::vector<dg::DPoint2D> ClipArea(std::vector<dg::DPoint2D> outline, const ClipRect& rect);

}  // namespace replay
