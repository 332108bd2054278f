// A picture in memory.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace replay {

// Rows from the top, each pixel 0xAARRGGBB with the colours multiplied by alpha. Without pixels when a size is 0.
struct Image {
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> pixels;

    // x and y must be inside; y counts from the top.
    [[nodiscard]] std::uint32_t At(int x, int y) const {
        return pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x)];
    }
};

}  // namespace replay
