// Small scenes, and what their pictures show.
#pragma once

#include "host/dg/Color.h"
#include "host/dg/Location.h"
#include "scene/Model.h"
#include "viewer/ViewSnapshot.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace pictures {

inline constexpr double NaN = std::numeric_limits<double>::quiet_NaN();
inline constexpr double Infinity = std::numeric_limits<double>::infinity();

inline constexpr dg::Color Red{1, 0, 0, 1};
inline constexpr dg::Color Green{0, 1, 0, 1};
inline constexpr dg::Color Blue{0, 0, 1, 1};
inline constexpr dg::Color Yellow{1, 1, 0, 1};
inline constexpr dg::Color Cyan{0, 1, 1, 1};
inline constexpr dg::Color Magenta{1, 0, 1, 1};

// The colour of a pixel as a word. Light changes the brightness of a surface, but not which channels it has.
inline std::string NameOf(std::uint32_t pixel) {
    const unsigned red = pixel >> 16U & 0xFFU;
    const unsigned green = pixel >> 8U & 0xFFU;
    const unsigned blue = pixel & 0xFFU;
    const unsigned most = std::max({red, green, blue});
    if (most < 60) {
        return "dark";
    }
    const auto has = [&](unsigned channel) { return channel * 2 > most; };
    constexpr std::array<const char*, 8> names = {"dark", "blue", "green", "cyan", "red", "magenta", "yellow", "pale"};
    return names[(has(red) ? 4U : 0U) + (has(green) ? 2U : 0U) + (has(blue) ? 1U : 0U)];
}

// A flat rectangle around a centre, spanned by two half sides; seen from both sides.
inline scene::Part MakePatch(const dg::DPoint3D& center, const dg::DVec3& a, const dg::DVec3& b,
                             const dg::Color& color) {
    scene::Part part;
    part.color = color;
    part.vertices = {center + -a + -b, center + a + -b, center + a + b, center + -a + b};
    part.triangles = {{0, 1, 2}, {0, 2, 3}};
    return part;
}

inline scene::Part MakePatch(const dg::DPoint3D& center, double half, const dg::Color& color) {
    return MakePatch(center, {half, 0, 0}, {0, half, 0}, color);
}

inline std::shared_ptr<const scene::Model> MakeModel(std::vector<scene::Part> parts) {
    auto model = std::make_shared<scene::Model>();
    model->parts = std::move(parts);
    return model;
}

inline viewer::ViewSnapshot MakeView(const dg::Location& location, bool orthographic = true) {
    viewer::ViewSnapshot view;
    view.kind = "shapeview";
    view.width = 160;
    view.height = 100;
    view.camera.SetViewport(160, 100);
    if (orthographic) {
        view.camera.SetProjection(-8, 8, -5, 5, -1, true);
    } else {
        view.camera.SetProjection(-0.8, 0.8, -0.5, 0.5, -1, false);
    }
    view.camera.SetLocation(location);
    return view;
}

inline dg::Location At(double x, double y, double z) {
    dg::Location location;
    location.SetPos({x, y, z});
    return location;
}

}  // namespace pictures
