// Fingers, axes and the context mark have one size on every card; trails and the band follow the view's pixels. Trails
// pale towards their beginning. What is not finite or outside the picture is left out.
#include "replay/picture/PanelOverlay.h"

#include "replay/picture/Clip.h"
#include "viewer/ViewSpec.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <numbers>
#include <optional>
#include <string>
#include <vector>

namespace replay {

namespace {

constexpr std::array<dg::Color, 10> FingerColors = {{{0.85F, 0.11F, 0.38F, 1},
                                                     {0.10F, 0.45F, 0.91F, 1},
                                                     {0.02F, 0.55F, 0.36F, 1},
                                                     {0.90F, 0.45F, 0.0F, 1},
                                                     {0.48F, 0.20F, 0.80F, 1},
                                                     {0.0F, 0.55F, 0.65F, 1},
                                                     {0.60F, 0.42F, 0.10F, 1},
                                                     {0.78F, 0.15F, 0.75F, 1},
                                                     {0.35F, 0.42F, 0.50F, 1},
                                                     {0.45F, 0.58F, 0.05F, 1}}};
constexpr dg::Color SeamColor{1, 1, 1, 1};
constexpr double FingerRadius = 13;
constexpr double Beside = 11;  // from a finger's middle, along both axes, to what must not cover it
constexpr double TrailWidth = 4.5;
constexpr int TrailSteps = 12;      // of its fading
constexpr double ShortestStep = 1;  // between two points of a trail
constexpr double FullTurn = 2 * std::numbers::pi;

dg::Color WithAlpha(dg::Color color, double alpha) {
    color.alpha = static_cast<float>(alpha);
    return color;
}

const dg::Color& ColorOf(const Trail& trail) {
    const auto count = static_cast<int>(FingerColors.size());
    return FingerColors[static_cast<std::size_t>((trail.finger % count + count) % count)];
}

// From view pixels to the sheet.
class PixelMap {
public:
    PixelMap(const viewer::ViewSnapshot& view, const PictureRect& rect)
        : m_rect(rect), m_scaleX(rect.width / view.width), m_scaleY(rect.height / view.height) {}

    [[nodiscard]] dg::DPoint2D ToSheet(const dg::DPoint2D& pixel) const {
        return {m_rect.x + pixel.x * m_scaleX, m_rect.y + m_rect.height - pixel.y * m_scaleY};
    }
    // Whether something of a size at a place can be seen.
    [[nodiscard]] bool Shows(const dg::DPoint2D& place, double reach) const {
        return place.x >= m_rect.x - reach && place.x <= m_rect.x + m_rect.width + reach &&
               place.y >= m_rect.y - reach && place.y <= m_rect.y + m_rect.height + reach;
    }
    [[nodiscard]] const PictureRect& GetRect() const { return m_rect; }
    [[nodiscard]] ClipRect GetClip() const {
        return {m_rect.x - 20, m_rect.y - 20, m_rect.x + m_rect.width + 20, m_rect.y + m_rect.height + 20};
    }

private:
    PictureRect m_rect;
    double m_scaleX;
    double m_scaleY;
};

void DrawAxes(SheetCanvas& canvas, const viewer::ViewSnapshot& view, const PictureRect& rect) {
    constexpr double length = 24;
    constexpr std::array<dg::Color, 3> colors = {
        {{0.82F, 0.12F, 0.12F, 1}, {0.06F, 0.55F, 0.14F, 1}, {0.13F, 0.25F, 0.85F, 1}}};
    constexpr std::array<const char*, 3> names = {"X", "Y", "Z"};
    const dg::FMat33& axes = view.camera.GetLocation().GetMat();
    const dg::DPoint2D center{rect.x + 38, rect.y + rect.height - 38};
    cairo_t* context = canvas.GetContext();
    cairo_new_sub_path(context);
    cairo_arc(context, center.x, center.y, length + 10, 0, FullTurn);
    SetColor(context, {1, 1, 1, 0.55F});
    cairo_fill(context);
    std::array<std::size_t, 3> order = {0, 1, 2};  // the axis that points at the viewer last
    const auto isFinite = [&](std::size_t i) {
        return std::isfinite(axes.m[0][i]) && std::isfinite(axes.m[1][i]) && std::isfinite(axes.m[2][i]);
    };
    if (!std::all_of(order.begin(), order.end(), isFinite)) {
        return;
    }
    std::sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) { return axes.m[2][a] < axes.m[2][b]; });
    for (const std::size_t i : order) {
        const double x = static_cast<double>(axes.m[0][i]);
        const double y = static_cast<double>(axes.m[1][i]);
        cairo_move_to(context, center.x, center.y);
        cairo_line_to(context, center.x + x * length, center.y - y * length);
        cairo_set_line_width(context, 2.2);
        SetColor(context, colors[i]);
        cairo_stroke(context);
        canvas.DrawLabel(center.x + x * (length + 7), center.y - y * (length + 7) + 4, names[i],
                         {11, true, Align::Center, colors[i]});
    }
}

void DrawRubberBand(cairo_t* context, const PixelMap& map, const viewer::RubberBand& band) {
    const dg::DPoint2D a = map.ToSheet({static_cast<double>(band.x0), static_cast<double>(band.y0)});
    const dg::DPoint2D b = map.ToSheet({static_cast<double>(band.x1), static_cast<double>(band.y1)});
    const auto area = ClipArea({{a.x, a.y}, {b.x, a.y}, {b.x, b.y}, {a.x, b.y}}, map.GetClip());
    for (const dg::DPoint2D& point : area) {
        cairo_line_to(context, point.x, point.y);
    }
    cairo_close_path(context);
    SetColor(context, {0.10F, 0.42F, 0.90F, 0.16F});
    cairo_fill_preserve(context);
    SetColor(context, {0.10F, 0.42F, 0.90F, 1});
    cairo_set_line_width(context, 1.6);
    cairo_stroke(context);
}

// The points on the sheet, without those that would not show as a step. The last one always stays.
std::vector<dg::DPoint2D> ThinTrail(const PixelMap& map, const std::vector<dg::DPoint2D>& points) {
    std::vector<dg::DPoint2D> kept;
    for (std::size_t i = 0; i < points.size(); ++i) {
        const dg::DPoint2D place = map.ToSheet(points[i]);
        if (!std::isfinite(place.x) || !std::isfinite(place.y)) {
            continue;
        }
        if (kept.empty() || i + 1 == points.size() ||
            std::hypot(place.x - kept.back().x, place.y - kept.back().y) >= ShortestStep) {
            kept.push_back(place);
        }
    }
    return kept;
}

// The oldest part is the faintest.
void DrawTrailLine(cairo_t* context, const PixelMap& map, const std::vector<dg::DPoint2D>& places,
                   const dg::Color& color, double width) {
    const std::size_t segments = places.empty() ? 0 : places.size() - 1;
    cairo_set_line_width(context, width);
    cairo_set_line_join(context, CAIRO_LINE_JOIN_ROUND);
    std::size_t drawn = 0;
    for (int step = 1; step <= TrailSteps; ++step) {
        const std::size_t end = segments * static_cast<std::size_t>(step) / TrailSteps;
        std::optional<dg::DPoint2D> pen;
        for (; drawn < end; ++drawn) {
            const auto line = ClipLine(places[drawn], places[drawn + 1], map.GetClip());
            if (!line) {
                continue;
            }
            if (!pen || !(*pen == line->first)) {
                cairo_move_to(context, line->first.x, line->first.y);
            }
            cairo_line_to(context, line->second.x, line->second.y);
            pen = line->second;
        }
        SetColor(context, WithAlpha(color, 0.12 + 0.73 * step / TrailSteps));
        cairo_stroke(context);
    }
}

// A finger that has left the screen is a dashed ring. Both are pale, whatever is below them, for the number's sake.
void DrawFinger(SheetCanvas& canvas, const Trail& trail, const dg::DPoint2D& place) {
    cairo_t* context = canvas.GetContext();
    const dg::Color& color = ColorOf(trail);
    cairo_new_sub_path(context);
    cairo_arc(context, place.x, place.y, FingerRadius, 0, FullTurn);
    SetColor(context, {1, 1, 1, 0.85F});
    cairo_fill_preserve(context);
    SetColor(context, WithAlpha(color, trail.down ? 0.35 : 0.0));
    cairo_fill_preserve(context);
    constexpr double dash = 3.5;
    if (!trail.down) {
        cairo_set_dash(context, &dash, 1, 0);
    }
    cairo_set_line_width(context, trail.down ? 2.5 : 1.8);
    SetColor(context, color);
    cairo_stroke(context);
    cairo_set_dash(context, nullptr, 0, 0);
    canvas.DrawLabel(place.x, place.y + 5, std::to_string(static_cast<std::int64_t>(trail.finger) + 1),
                     {14, true, Align::Center, {0.10F, 0.10F, 0.14F, 1}});
}

void DrawTrails(SheetCanvas& canvas, const std::vector<Trail>& trails, const PixelMap& map) {
    std::vector<std::vector<dg::DPoint2D>> lines;
    for (const Trail& trail : trails) {
        lines.push_back(ThinTrail(map, trail.points));
        // A pale seam keeps the line apart from surfaces of its own colour.
        DrawTrailLine(canvas.GetContext(), map, lines.back(), SeamColor, TrailWidth + 3);
        DrawTrailLine(canvas.GetContext(), map, lines.back(), ColorOf(trail), TrailWidth);
    }
    for (std::size_t i = 0; i < trails.size(); ++i) {
        if (!lines[i].empty() && map.Shows(lines[i].back(), FingerRadius)) {
            DrawFinger(canvas, trails[i], lines[i].back());
        }
    }
}

// A small open menu beside the place; it opens to the side where there is room.
void DrawContextMenu(SheetCanvas& canvas, const PixelMap& map, const std::string& part, const dg::DPoint2D& pixel) {
    const dg::DPoint2D place = map.ToSheet(pixel);
    if (!map.Shows(place, 0)) {
        return;
    }
    const TextStyle style{13, true, Align::Left, {0.12F, 0.14F, 0.18F, 1}};
    const std::string text = canvas.FitText(part.empty() ? "menu" : "menu: " + part, style, map.GetRect().width - 40);
    const double width = canvas.MeasureText(text, style) + 20;
    constexpr double height = 58;
    const PictureRect& rect = map.GetRect();
    // Clear of the finger that opened it.
    const double x = place.x + Beside + width <= rect.x + rect.width ? place.x + Beside : place.x - Beside - width;
    const double y = place.y + Beside + height <= rect.y + rect.height ? place.y + Beside : place.y - Beside - height;
    cairo_t* context = canvas.GetContext();
    cairo_rectangle(context, x, y, width, height);
    SetColor(context, {1, 1, 1, 0.94F});
    cairo_fill_preserve(context);
    SetColor(context, {0.40F, 0.43F, 0.48F, 1});
    cairo_set_line_width(context, 1.2);
    cairo_stroke(context);
    for (const double line : {31.0, 40.0, 49.0}) {
        cairo_rectangle(context, x + 10, y + line - 2, (width - 20) * (line == 40.0 ? 0.55 : 0.8), 3.5);
    }
    SetColor(context, {0.72F, 0.75F, 0.79F, 1});
    cairo_fill(context);
    canvas.DrawLabel(x + 10, y + 18, text, style);
}

struct LegendEntry {
    Trail example;
    const char* text;
};

}  // namespace

double DrawLegend(SheetCanvas& canvas, const std::vector<Panel>& panels, double right, double baseLine) {
    constexpr double gap = 28;
    const TextStyle style{15, false, Align::Left, {0.36F, 0.39F, 0.44F, 1}};
    double left = right;
    for (const LegendEntry& entry :
         {LegendEntry{{0, {}, false}, "has just lifted"}, LegendEntry{{0, {}, true}, "finger on the screen"}}) {
        const bool isShown = std::any_of(panels.begin(), panels.end(), [&](const Panel& panel) {
            return std::any_of(panel.trails.begin(), panel.trails.end(),
                               [&](const Trail& trail) { return trail.down == entry.example.down; });
        });
        if (isShown) {
            left -= canvas.MeasureText(entry.text, style);
            canvas.DrawText(left, baseLine, entry.text, style);
            left -= FingerRadius + 8;
            DrawFinger(canvas, entry.example, {left, baseLine - 5});
            left -= FingerRadius + gap;
        }
    }
    return right - left;
}

void DrawOverlay(SheetCanvas& canvas, const Panel& panel, const PictureRect& rect) {
    const viewer::ViewSnapshot& view = panel.view;
    const PixelMap map(view, rect);
    cairo_save(canvas.GetContext());
    cairo_rectangle(canvas.GetContext(), rect.x, rect.y, rect.width, rect.height);
    cairo_clip(canvas.GetContext());
    if (viewer::IsShapeViewKind(view.kind)) {
        DrawAxes(canvas, view, rect);
    }
    if (view.rubberBand) {
        DrawRubberBand(canvas.GetContext(), map, *view.rubberBand);
    }
    DrawTrails(canvas, panel.trails, map);
    if (view.contextMenu) {
        DrawContextMenu(canvas, map, *view.contextMenu, view.contextMenuAt);
    }
    cairo_restore(canvas.GetContext());
}

}  // namespace replay
