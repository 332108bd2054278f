// Draws on a finer grid than the picture's and averages, so that slanting edges are smooth. Nearness grows towards the
// eye, and the nearest surface stays.
#include "replay/picture/Raster.h"

#include "replay/picture/Clip.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

namespace replay {

namespace {

dg::Color Mix(const dg::Color& a, const dg::Color& b, float share) {
    return {a.red + (b.red - a.red) * share, a.green + (b.green - a.green) * share, a.blue + (b.blue - a.blue) * share,
            1};
}

std::uint32_t ToByte(float value) {
    return static_cast<std::uint32_t>(std::lround(std::clamp(value, 0.0F, 1.0F) * 255.0F));
}

std::uint32_t Lit(const dg::Color& color, double light) {
    const auto factor = static_cast<float>(light);
    return 0xFF000000U | ToByte(color.red * factor) << 16U | ToByte(color.green * factor) << 8U |
           ToByte(color.blue * factor);
}

double Cross(const PicturePoint& a, const PicturePoint& b, double x, double y) {
    return (b.x - a.x) * (y - a.y) - (b.y - a.y) * (x - a.x);
}

// The samples between two places whose centres lie in [low, high].
struct Range {
    int first;
    int last;  // below first when there are none
};

Range SamplesBetween(double low, double high, int size) {
    const double first = std::max(std::ceil(low - 0.5), 0.0);
    const double last = std::min(std::floor(high - 0.5), size - 1.0);
    return first <= last ? Range{static_cast<int>(first), static_cast<int>(last)} : Range{0, -1};
}

bool IsFinite(const PicturePoint& p) {
    return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.nearness);
}

}  // namespace

Raster::Raster(int width, int height, const dg::Color& top, const dg::Color& bottom)
    : m_width(width * SamplesPerPixel), m_height(height * SamplesPerPixel) {
    const auto count = static_cast<std::size_t>(m_width) * static_cast<std::size_t>(m_height);
    m_colors.reserve(count);
    for (int y = 0; y < m_height; ++y) {
        const float share = (static_cast<float>(y) + 0.5F) / static_cast<float>(m_height);
        m_colors.insert(m_colors.end(), static_cast<std::size_t>(m_width), Lit(Mix(top, bottom, share), 1));
    }
    m_nearness.assign(count, -std::numeric_limits<double>::infinity());
}

void Raster::FillTriangle(const std::array<PicturePoint, 3>& corners, const std::array<double, 3>& light,
                          const dg::Color& color) {
    const auto& [a, b, c] = corners;
    const double area = Cross(a, b, c.x, c.y);
    if (!std::isnormal(area) || !IsFinite(a) || !IsFinite(b) || !IsFinite(c)) {
        return;
    }
    const auto [left, right] = std::minmax({a.x, b.x, c.x});
    const auto [top, bottom] = std::minmax({a.y, b.y, c.y});
    const Range columns = SamplesBetween(left, right, m_width);
    const Range rows = SamplesBetween(top, bottom, m_height);
    for (int y = rows.first; y <= rows.last; ++y) {
        for (int x = columns.first; x <= columns.last; ++x) {
            const double u = Cross(b, c, x + 0.5, y + 0.5) / area;
            const double v = Cross(c, a, x + 0.5, y + 0.5) / area;
            const double w = 1 - u - v;
            const double nearness = u * a.nearness + v * b.nearness + w * c.nearness;
            if (u >= 0 && v >= 0 && w >= 0 && nearness > m_nearness[Index(x, y)]) {
                m_nearness[Index(x, y)] = nearness;
                m_colors[Index(x, y)] = Lit(color, u * light[0] + v * light[1] + w * light[2]);
            }
        }
    }
}

// The samples around count too: on a surface that falls away steeply the line's own sample may already be covered by
// the surface that the line bounds.
double Raster::FarthestAround(int x, int y) const {
    double farthest = std::numeric_limits<double>::infinity();
    for (int row = std::max(y - 1, 0); row <= std::min(y + 1, m_height - 1); ++row) {
        for (int column = std::max(x - 1, 0); column <= std::min(x + 1, m_width - 1); ++column) {
            farthest = std::min(farthest, m_nearness[Index(column, row)]);
        }
    }
    return farthest;
}

template <class IsVisible>
void Raster::Stroke(const PicturePoint& from, const PicturePoint& to, double radius, const dg::Color& color,
                    const IsVisible& isVisible) {
    const ClipRect rect{-radius, -radius, m_width + radius, m_height + radius};
    const auto clipped = ClipLine({from.x, from.y}, {to.x, to.y}, rect);
    if (!clipped || !IsFinite(from) || !IsFinite(to)) {
        return;
    }
    const auto& [start, end] = *clipped;
    const double dx = to.x - from.x;
    const double dy = to.y - from.y;
    const double square = dx * dx + dy * dy;
    // How far along the whole line a place is, for its nearness.
    const auto shareAt = [&](double x, double y) {
        return square > 0 ? ((x - from.x) * dx + (y - from.y) * dy) / square : 0.0;
    };
    const int steps = std::max(1, static_cast<int>(std::ceil(std::hypot(end.x - start.x, end.y - start.y) * 1.5)));
    for (int i = 0; i <= steps; ++i) {
        const double share = static_cast<double>(i) / steps;
        const double x = start.x + (end.x - start.x) * share;
        const double y = start.y + (end.y - start.y) * share;
        const double nearness = from.nearness + (to.nearness - from.nearness) * shareAt(x, y);
        if (isVisible(x, y, nearness)) {
            DrawDisk({x, y, nearness}, radius, color);
        }
    }
}

void Raster::DrawEdge(const PicturePoint& from, const PicturePoint& to, double radius, double bias,
                      const dg::Color& color) {
    Stroke(from, to, radius, color, [&](double x, double y, double nearness) {
        const int column = std::clamp(static_cast<int>(std::floor(x)), 0, m_width - 1);
        const int row = std::clamp(static_cast<int>(std::floor(y)), 0, m_height - 1);
        return nearness + bias >= FarthestAround(column, row);
    });
}

void Raster::DrawLine(const PicturePoint& from, const PicturePoint& to, double radius, const dg::Color& color) {
    Stroke(from, to, radius, color, [](double, double, double) { return true; });
}

void Raster::DrawDisk(const PicturePoint& center, double radius, const dg::Color& color) {
    const std::uint32_t pixel = Lit(color, 1);
    if (!IsFinite(center) || !std::isfinite(radius)) {
        return;
    }
    const Range rows = SamplesBetween(center.y - radius, center.y + radius, m_height);
    const Range columns = SamplesBetween(center.x - radius, center.x + radius, m_width);
    for (int y = rows.first; y <= rows.last; ++y) {
        for (int x = columns.first; x <= columns.last; ++x) {
            const double dx = x + 0.5 - center.x;
            const double dy = y + 0.5 - center.y;
            if (dx * dx + dy * dy <= radius * radius) {
                m_colors[Index(x, y)] = pixel;
            }
        }
    }
}

Image Raster::Finish() const {
    constexpr std::uint32_t samples = SamplesPerPixel * SamplesPerPixel;
    Image image{m_width / SamplesPerPixel, m_height / SamplesPerPixel, {}};
    image.pixels.reserve(static_cast<std::size_t>(image.width) * static_cast<std::size_t>(image.height));
    for (int y = 0; y < image.height; ++y) {
        for (int x = 0; x < image.width; ++x) {
            std::uint32_t redAndBlue = 0;
            std::uint32_t green = 0;
            for (int sample = 0; sample < SamplesPerPixel * SamplesPerPixel; ++sample) {
                const std::uint32_t color = m_colors[Index(x * SamplesPerPixel + sample % SamplesPerPixel,
                                                           y * SamplesPerPixel + sample / SamplesPerPixel)];
                redAndBlue += color & 0x00FF00FFU;
                green += color & 0x0000FF00U;
            }
            const std::uint32_t red = (redAndBlue >> 16U) / samples;
            const std::uint32_t blue = (redAndBlue & 0xFFFFU) / samples;
            image.pixels.push_back(0xFF000000U | red << 16U | (green / samples & 0xFF00U) | blue);
        }
    }
    return image;
}

}  // namespace replay
