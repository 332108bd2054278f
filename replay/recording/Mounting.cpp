// Flips and turns fractions of the panel, and spreads them over the view's pixels.
#include "replay/recording/Mounting.h"

#include "viewer/ViewSpec.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace replay {

namespace {

constexpr double MillimetresPerInch = 25.4;

// The part of the axis that lies before a coordinate, 0 to 1 inside the device's range.
double FractionOf(std::int32_t coordinate, const DeviceAxis& axis) {
    return (static_cast<double>(coordinate) - axis.minimum) / (static_cast<double>(axis.maximum) - axis.minimum);
}

double PixelsAt(double fraction, std::uint32_t pixels) {
    return fraction * std::max(1.0, static_cast<double>(pixels) - 1);
}

int PixelsPerInch(std::uint32_t pixels, const DeviceAxis& axis) {
    if (!axis.sizeMm) {
        return viewer::HostSettings().ppiX;
    }
    const double ppi = std::round(pixels * MillimetresPerInch / *axis.sizeMm);
    return static_cast<int>(std::clamp(ppi, 1.0, static_cast<double>(std::numeric_limits<std::int32_t>::max())));
}

}  // namespace

PanelMapping::PanelMapping(const DeviceAxis& x, const DeviceAxis& y, const Mounting& mounting, std::uint32_t width,
                           std::uint32_t height)
    : m_x(x), m_y(y), m_mounting(mounting), m_width(width), m_height(height) {}

input::Place PanelMapping::PlaceOf(std::int32_t x, std::int32_t y) const {
    double right = FractionOf(x, m_x);
    double down = FractionOf(y, m_y);
    right = m_mounting.flipX ? 1 - right : right;
    down = m_mounting.flipY ? 1 - down : down;
    const auto placeAt = [&](double fromLeft, double fromTop) {
        return input::Place{PixelsAt(fromLeft, m_width), PixelsAt(1 - fromTop, m_height)};
    };
    switch (m_mounting.rotation) {
    case 90: return placeAt(1 - down, right);
    case 180: return placeAt(1 - right, 1 - down);
    case 270: return placeAt(down, 1 - right);
    default: return placeAt(right, down);
    }
}

int PanelMapping::PixelsPerInchX() const {
    return PixelsPerInch(m_width, IsOnItsSide() ? m_y : m_x);
}

int PanelMapping::PixelsPerInchY() const {
    return PixelsPerInch(m_height, IsOnItsSide() ? m_x : m_y);
}

}  // namespace replay
