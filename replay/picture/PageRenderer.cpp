// Draws a page once, as a symbol, and places it in each picture; for each halving of the scale there is one, whose
// lines stay thick enough to be seen. A page that is too large, small or far away for that is drawn shape by shape.
#include "replay/picture/PageRenderer.h"

#include "host/dg/Location.h"
#include "replay/picture/Clip.h"
#include "replay/picture/SheetCanvas.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

namespace replay {

namespace {

constexpr dg::Color DeskColor{0.80F, 0.82F, 0.85F, 1};
constexpr dg::Color PaperEdge{0.55F, 0.58F, 0.62F, 1};
constexpr double ThinnestLine = 0.45;  // sheet units
// Text is left out when it is too small to be read as text, or when one letter is larger than any picture.
constexpr double SmallestText = 1.0;
constexpr double LargestText = 2000;
// Sheet units a page unit of the symbols that a page is drawn by: about the size of a whole page in a panel.
constexpr double SymbolScale = 24;
// A page that is larger, smaller or farther away is drawn shape by shape: the drawing library counts in 24 bits.
constexpr double MostMagnified = 64;
constexpr double FarthestSymbol = 30'000;
// Shapes are cut this far outside the picture, where their borders do not show.
constexpr double Margin = 50;

// From the page to where it is drawn.
class PageView {
public:
    // As a view shows it.
    PageView(const viewer::ViewSnapshot& view, const PictureRect& rect)
        : m_placement(view.placement), m_rect(rect), m_scale(rect.width / view.orthoWidth), m_thinnest(ThinnestLine) {}

    // The whole page in a rectangle, with a thinnest line.
    PageView(const scene::Page& page, const PictureRect& rect, double thinnest)
        : m_rect(rect), m_scale(rect.width / page.width), m_thinnest(thinnest) {}

    [[nodiscard]] bool IsValid() const {
        const dg::DPoint2D origin = ToSheet({0, 0});
        return std::isfinite(m_scale) && m_scale > 0 && std::isfinite(origin.x) && std::isfinite(origin.y);
    }
    [[nodiscard]] double GetScale() const { return m_scale; }
    [[nodiscard]] double GetThinnest() const { return m_thinnest; }

    [[nodiscard]] dg::DPoint2D ToSheet(const dg::DPoint2D& page) const {
        const dg::DVec3 offset = dg::DPoint3D(page.x, page.y, 0) - m_placement.GetPos();
        const dg::DVec3 local = dg::DMat33(m_placement.GetMat()) * offset;
        return {m_rect.x + m_rect.width / 2 + local.x * m_scale, m_rect.y + m_rect.height / 2 - local.y * m_scale};
    }

    [[nodiscard]] ClipRect GetClip() const {
        return {m_rect.x - Margin, m_rect.y - Margin, m_rect.x + m_rect.width + Margin,
                m_rect.y + m_rect.height + Margin};
    }

private:
    dg::Location m_placement;
    PictureRect m_rect;
    double m_scale;
    double m_thinnest;  // line, where this draws
};

void FillArea(cairo_t* context, const PageView& view, const scene::Loop& outline, const dg::Color& fill) {
    scene::Loop loop;
    for (const dg::DPoint2D& point : outline) {
        loop.push_back(view.ToSheet(point));
    }
    for (const dg::DPoint2D& point : ClipArea(std::move(loop), view.GetClip())) {
        cairo_line_to(context, point.x, point.y);
    }
    cairo_close_path(context);
    SetColor(context, fill);
    cairo_fill(context);
}

bool SameStyle(const scene::PageLine& a, const scene::PageLine& b) {
    return a.width == b.width && a.color == b.color && a.dashed == b.dashed;
}

// Lines of one style, which are one path: in a file that takes a tenth of what it takes line by line.
void DrawPageLines(cairo_t* context, const PageView& view, const scene::PageLine* first, const scene::PageLine* end) {
    std::optional<dg::DPoint2D> pen;
    for (const scene::PageLine* line = first; line != end; ++line) {
        const auto clipped = ClipLine(view.ToSheet(line->from), view.ToSheet(line->to), view.GetClip());
        if (!clipped) {
            continue;
        }
        if (!pen || !(*pen == clipped->first)) {
            cairo_move_to(context, clipped->first.x, clipped->first.y);
        }
        cairo_line_to(context, clipped->second.x, clipped->second.y);
        pen = clipped->second;
    }
    const double dash = 0.12 * view.GetScale();
    // Dashes that are too short to be seen would take very long to draw.
    if (first->dashed && dash > 0.5) {
        cairo_set_dash(context, &dash, 1, 0);
    }
    cairo_set_line_join(context, CAIRO_LINE_JOIN_ROUND);
    cairo_set_line_width(context, std::max(first->width * view.GetScale(), view.GetThinnest()));
    SetColor(context, first->color);
    cairo_stroke(context);
    cairo_set_dash(context, nullptr, 0, 0);
}

// The letters are drawn as shapes, so that they turn with the page and are cut off at the picture's border.
void DrawPageText(cairo_t* context, const PageView& view, const scene::PageText& text) {
    const double size = text.height * view.GetScale();
    const dg::DPoint2D at = view.ToSheet(text.at);
    const ClipRect clip = view.GetClip();
    const double reach = size * static_cast<double>(text.text.size() + 1);
    if (!(size >= SmallestText && size <= LargestText && at.x > clip.left - reach && at.x < clip.right + reach &&
          at.y > clip.bottom - reach && at.y < clip.top + reach)) {
        return;
    }
    const dg::DPoint2D right = view.ToSheet({text.at.x + 1, text.at.y});
    const dg::DPoint2D up = view.ToSheet({text.at.x, text.at.y + 1});
    cairo_matrix_t matrix;
    cairo_matrix_init(&matrix, (right.x - at.x) * text.height, (right.y - at.y) * text.height,
                      (at.x - up.x) * text.height, (at.y - up.y) * text.height, 0, 0);
    if (std::abs(matrix.xx * matrix.yy - matrix.xy * matrix.yx) < 1e-6) {
        return;  // seen edge-on: the drawing library refuses a matrix that cannot be inverted
    }
    cairo_save(context);
    cairo_select_font_face(context, "sans-serif", CAIRO_FONT_SLANT_NORMAL, CAIRO_FONT_WEIGHT_NORMAL);
    cairo_translate(context, at.x, at.y);
    cairo_transform(context, &matrix);
    cairo_set_font_size(context, 1.3);  // capitals are then about as high as the text is said to be
    cairo_text_extents_t extents{};
    cairo_text_extents(context, text.text.c_str(), &extents);
    cairo_move_to(context, text.align == scene::TextAlign::Center ? -extents.x_advance / 2 : 0.0, 0);
    cairo_text_path(context, text.text.c_str());
    SetColor(context, text.color);
    cairo_fill(context);
    cairo_restore(context);
}

void DrawContent(cairo_t* context, const scene::Page& page, const PageView& view) {
    const scene::Loop paper = scene::MakeRectangle(-page.width / 2, -page.height / 2, page.width / 2, page.height / 2);
    FillArea(context, view, paper, page.paper);
    for (const scene::PageArea& area : page.areas) {
        FillArea(context, view, area.outline, area.fill);
    }
    std::vector<scene::PageLine> lines;
    for (std::size_t i = 0; i < paper.size(); ++i) {
        lines.push_back({paper[i], paper[(i + 1) % paper.size()], 0.01, PaperEdge, false});
    }
    lines.insert(lines.end(), page.lines.begin(), page.lines.end());
    const scene::PageLine* end = lines.data() + lines.size();
    for (const scene::PageLine* first = lines.data(); first != end;) {
        const scene::PageLine* next =
            std::find_if(first, end, [&](const scene::PageLine& line) { return !SameStyle(line, *first); });
        DrawPageLines(context, view, first, next);
        first = next;
    }
    for (const scene::PageText& text : page.texts) {
        DrawPageText(context, view, text);
    }
}

PictureRect SymbolRectOf(const scene::Page& page) {
    return {0, 0, page.width * SymbolScale, page.height * SymbolScale};
}

}  // namespace

PageRenderer::PageRenderer(scene::Page page) : m_page(std::move(page)) {}

// Twice as small a page has lines twice as thick, so that they are seen.
cairo_surface_t* PageRenderer::SymbolFor(int halvings) {
    auto& symbol = m_symbols[halvings];
    if (!symbol) {
        const PictureRect rect = SymbolRectOf(m_page);
        // The drawing library's files have symbols in the wrong place that begin elsewhere than at the origin.
        const cairo_rectangle_t extents{0, 0, rect.width, rect.height};
        symbol.reset(cairo_recording_surface_create(CAIRO_CONTENT_COLOR_ALPHA, &extents));
        cairo_t* context = cairo_create(symbol.get());
        DrawContent(context, m_page, PageView(m_page, rect, ThinnestLine * std::exp2(halvings)));
        cairo_destroy(context);
    }
    return symbol.get();
}

void PageRenderer::Draw(cairo_t* context, const viewer::ViewSnapshot& view, const PictureRect& rect) {
    cairo_save(context);
    cairo_rectangle(context, rect.x, rect.y, rect.width, rect.height);
    cairo_clip_preserve(context);
    SetColor(context, DeskColor);
    cairo_fill(context);
    const PageView pageView(view, rect);
    const double magnified = pageView.GetScale() / SymbolScale;
    const dg::DPoint2D origin = pageView.ToSheet({0, 0});
    const double reach = std::max(std::abs(origin.x), std::abs(origin.y));
    if (pageView.IsValid() && magnified < MostMagnified && magnified > 1 / MostMagnified && reach < FarthestSymbol) {
        const int halvings = std::max(0, static_cast<int>(std::floor(-std::log2(magnified))));
        const dg::DPoint2D right = pageView.ToSheet({1 / SymbolScale, 0});
        const dg::DPoint2D down = pageView.ToSheet({0, -1 / SymbolScale});
        cairo_matrix_t matrix;
        cairo_matrix_init(&matrix, right.x - origin.x, right.y - origin.y, down.x - origin.x, down.y - origin.y,
                          origin.x, origin.y);
        if (std::abs(matrix.xx * matrix.yy - matrix.xy * matrix.yx) > 1e-9) {
            const PictureRect symbol = SymbolRectOf(m_page);
            cairo_transform(context, &matrix);
            cairo_translate(context, -symbol.width / 2, -symbol.height / 2);
            cairo_set_source_surface(context, SymbolFor(halvings), 0, 0);
            cairo_paint(context);
        }
    } else if (pageView.IsValid()) {
        DrawContent(context, m_page, pageView);
    }
    cairo_restore(context);
}

}  // namespace replay
