// A colour with its opacity, in single precision.
#pragma once

namespace dg {

// Red, green, blue and alpha in [0, 1]. The default is opaque black.
struct Color {
    float red = 0;
    float green = 0;
    float blue = 0;
    float alpha = 1;

    constexpr Color() noexcept = default;
    constexpr Color(float r, float g, float b, float a) noexcept : red(r), green(g), blue(b), alpha(a) {}

    friend constexpr bool operator==(const Color&, const Color&) = default;
};

}  // namespace dg
