// Fills triangles and draws lines into a picture with a depth buffer.
#pragma once

#include "host/dg/Color.h"
#include "replay/picture/Image.h"
#include "replay/picture/SceneProjection.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace replay {

// Works on a grid of SamplesPerPixel x SamplesPerPixel samples a pixel. Places and radii are in samples. What lies
// outside the picture, and what is not finite, is left out.
class Raster {
public:
    static constexpr int SamplesPerPixel = 2;

    // A picture of width x height pixels, filled with a vertical gradient. Sizes must be positive.
    Raster(int width, int height, const dg::Color& top, const dg::Color& bottom);

    [[nodiscard]] int GetWidth() const noexcept { return m_width; }
    [[nodiscard]] int GetHeight() const noexcept { return m_height; }

    // The light is a factor of the colour at each corner.
    void FillTriangle(const std::array<PicturePoint, 3>& corners, const std::array<double, 3>& light,
                      const dg::Color& color);
    // A line with round ends, where no surface is nearer than it by more than the bias.
    void DrawEdge(const PicturePoint& from, const PicturePoint& to, double radius, double bias, const dg::Color& color);
    // In front of everything.
    void DrawLine(const PicturePoint& from, const PicturePoint& to, double radius, const dg::Color& color);
    void DrawDisk(const PicturePoint& center, double radius, const dg::Color& color);

    // The picture with its samples averaged.
    [[nodiscard]] Image Finish() const;

private:
    template <class IsVisible>
    void Stroke(const PicturePoint& from, const PicturePoint& to, double radius, const dg::Color& color,
                const IsVisible& isVisible);
    [[nodiscard]] double FarthestAround(int x, int y) const;
    [[nodiscard]] std::size_t Index(int x, int y) const noexcept {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(m_width) + static_cast<std::size_t>(x);
    }

    int m_width;
    int m_height;
    std::vector<std::uint32_t> m_colors;  // as an image's pixels
    std::vector<double> m_nearness;
};

}  // namespace replay
