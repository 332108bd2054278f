// Where a contact is in the view. Contacts keep places that are not rounded, so that what lies between two reports is
// exact; only records have pixels, and those are bounded by the view. Tested by tests/input/FeederFramesTest.cpp.
#include "input/Geometry.h"

#include "host/dg/Conversion.h"
#include "input/Thresholds.h"

#include <algorithm>
#include <cmath>

namespace input {
namespace {

double LastPixel(std::uint32_t size) noexcept {
    return size == 0 ? 0.0 : static_cast<double>(size) - 1;
}

double Bounded(double coordinate) noexcept {
    return std::clamp(coordinate, -FarthestPx, FarthestPx);
}

std::int32_t NearestPixel(double coordinate, std::uint32_t size) noexcept {
    return dg::TruncateToInt32(std::clamp(std::floor(coordinate + 0.5), 1.0, std::max(1.0, LastPixel(size))));
}

}  // namespace

Place PlaceOf(const Geometry& geometry, double x, double y) noexcept {
    const bool hasScale = std::isfinite(geometry.pixelsPerUnit) && geometry.pixelsPerUnit > 0;
    const double scale = hasScale ? geometry.pixelsPerUnit : 1;
    const double lastX = LastPixel(geometry.width);
    const double lastY = LastPixel(geometry.height);
    const bool isOnItsSide = geometry.turn == Turn::Quarter || geometry.turn == Turn::ThreeQuarters;
    const double right = Bounded(x * scale);
    const double down = geometry.rowsDown ? Bounded(y * scale) : (isOnItsSide ? lastX : lastY) - Bounded(y * scale);
    switch (geometry.turn) {
    case Turn::None: return {right, lastY - down};
    case Turn::Quarter: return {lastX - down, lastY - right};
    case Turn::Half: return {lastX - right, down};
    case Turn::ThreeQuarters: return {down, right};
    }
    return {right, lastY - down};
}

Pixel PixelOf(const Geometry& geometry, const Place& place) noexcept {
    return {NearestPixel(place.x, geometry.width), NearestPixel(place.y, geometry.height)};
}

Place Between(const Place& from, const Place& to, std::int64_t part, std::int64_t duration) noexcept {
    if (part >= duration) {
        return to;
    }
    const double share = part <= 0 ? 0 : static_cast<double>(part) / static_cast<double>(duration);
    return {from.x + (to.x - from.x) * share, from.y + (to.y - from.y) * share};
}

}  // namespace input
