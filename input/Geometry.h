// From a toolkit's coordinates to the pixels of a view.
#pragma once

#include <cstdint>

namespace input {

// How far the toolkit's coordinates are turned, clockwise: after a quarter their top edge is at the view's right.
enum class Turn : std::uint8_t { None, Quarter, Half, ThreeQuarters };

// How a toolkit counts. Rows are flipped first, then everything is turned.
struct Geometry {
    std::uint32_t width = 1;   // of the view, in device pixels
    std::uint32_t height = 1;  //
    bool rowsDown = true;      // whether y grows downward
    double pixelsPerUnit = 1;  // device pixels per unit of the toolkit; 1 unless it is above 0 and finite
    Turn turn = Turn::None;
};

// A place in view pixels, not rounded; origin at the middle of the lower left pixel.
struct Place {
    double x = 0;
    double y = 0;

    friend bool operator==(const Place&, const Place&) = default;
};

struct Pixel {
    std::int32_t x = 0;
    std::int32_t y = 0;

    friend bool operator==(const Pixel&, const Pixel&) = default;
};

// Where coordinates of the toolkit are, from the middle of its first pixel. Not bounded by the view, but finite, as
// long as both are numbers (an infinite one is far out).
[[nodiscard]] Place PlaceOf(const Geometry& geometry, double x, double y) noexcept;

// The pixel nearest to a place, at least 1 (in a touch record 0 means no value) and at most the view's last.
[[nodiscard]] Pixel PixelOf(const Geometry& geometry, const Place& place) noexcept;

// Where a movement of some duration is after a part of it; at its end when the duration is not above 0.
[[nodiscard]] Place Between(const Place& from, const Place& to, std::int64_t part, std::int64_t duration) noexcept;

}  // namespace input
