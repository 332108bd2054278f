// How a panel sits in front of its picture: the one mapping from device units to places in a view.
#pragma once

#include "input/Geometry.h"
#include "replay/recording/RecordingReader.h"

#include <cstdint>

namespace replay {

// Positions on the panel are flipped first and then turned.
struct Mounting {
    bool flipX = false;  // columns count from the right
    bool flipY = false;  // rows count from the bottom
    int rotation = 0;    // clockwise, in degrees: 0, 90, 180 or 270; by 90, the panel's top edge is at the view's right
};

// Spreads the range of a panel over the whole of a view.
class PanelMapping {
public:
    // Width and height of the view in pixels, at least 2.
    PanelMapping(const DeviceAxis& x, const DeviceAxis& y, const Mounting& mounting, std::uint32_t width,
                 std::uint32_t height);

    // Where a coordinate of the panel, from its left and from its top, is in the view: in pixels from the middle of the
    // lower left one, not rounded. What lies outside the panel's range is outside the view.
    [[nodiscard]] input::Place PlaceOf(std::int32_t x, std::int32_t y) const;

    // Pixels per inch, at least 1; 96 where the panel's size is not known.
    [[nodiscard]] int PixelsPerInchX() const;
    [[nodiscard]] int PixelsPerInchY() const;

private:
    [[nodiscard]] bool IsOnItsSide() const { return m_mounting.rotation == 90 || m_mounting.rotation == 270; }

    DeviceAxis m_x;
    DeviceAxis m_y;
    Mounting m_mounting;
    std::uint32_t m_width;
    std::uint32_t m_height;
};

}  // namespace replay
