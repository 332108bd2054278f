// A card from top to bottom: picture, status bar, heading with time, caption. The picture keeps the view's proportions,
// and text that does not fit is broken into lines and in the end cut off.
#include "replay/picture/PanelPainter.h"

#include "replay/files/CleanText.h"
#include "replay/picture/PanelOverlay.h"
#include "viewer/ViewSpec.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string>
#include <vector>

namespace replay {

namespace {

constexpr dg::Color CardColor{1, 1, 1, 1};
constexpr dg::Color CardBorder{0.80F, 0.82F, 0.85F, 1};
constexpr dg::Color EmptyColor{0.90F, 0.91F, 0.92F, 1};
constexpr dg::Color StatusColor{0.90F, 0.92F, 0.94F, 1};
constexpr dg::Color QuietText{0.36F, 0.39F, 0.44F, 1};
constexpr dg::Color HeadingText{0.08F, 0.19F, 0.36F, 1};

constexpr double StatusHeight = 22;
constexpr double Inset = 10;
constexpr double HeadingLine = 24;
constexpr double CaptionLine = 20;
constexpr double FooterMargin = 14;
constexpr std::size_t MostCaptionLines = 6;
const TextStyle CaptionStyle{14, false, Align::Left, TextStyle{}.color};
// 3D pictures have this many pixels a sheet unit, so that they stay sharp in a larger SVG.
constexpr double PixelsPerUnit = 2;

void FillRectangle(cairo_t* context, const PictureRect& rect, const dg::Color& color) {
    cairo_rectangle(context, rect.x, rect.y, rect.width, rect.height);
    SetColor(context, color);
    cairo_fill(context);
}

void DrawBorder(cairo_t* context, const PictureRect& rect) {
    cairo_rectangle(context, rect.x, rect.y, rect.width, rect.height);
    cairo_set_line_width(context, 1);
    SetColor(context, CardBorder);
    cairo_stroke(context);
}

// The largest rectangle with the view's proportions inside a box, in its middle. Views that are as good as lines give
// a rectangle without area.
PictureRect FitView(const viewer::ViewSnapshot& view, const PictureRect& box) {
    if (view.width == 0 || view.height == 0) {
        return {box.x, box.y, 0, 0};
    }
    const double scale = std::min(box.width / view.width, box.height / view.height);
    const double width = view.width * scale;
    const double height = view.height * scale;
    return {box.x + (box.width - width) / 2, box.y + (box.height - height) / 2, width, height};
}

// Breaks text at spaces into lines of at most a width; what does not fit into the last line is cut off.
std::vector<std::string> WrapText(SheetCanvas& canvas, const std::string& text, const TextStyle& style, double width,
                                  std::size_t mostLines) {
    std::vector<std::string> lines;
    std::string rest = text;
    while (!rest.empty() && lines.size() + 1 < mostLines && canvas.FitText(rest, style, width) != CleanText(rest)) {
        std::size_t end = 0;
        for (std::size_t space = rest.find(' '); space != std::string::npos; space = rest.find(' ', space + 1)) {
            if (canvas.MeasureText(rest.substr(0, space), style) > width) {
                break;
            }
            end = space;
        }
        if (end == 0) {
            break;
        }
        lines.push_back(rest.substr(0, end));
        rest.erase(0, end + 1);
    }
    if (!rest.empty()) {
        lines.push_back(canvas.FitText(rest, style, width));
    }
    return lines;
}

std::vector<std::string> CaptionLines(SheetCanvas& canvas, const Panel& panel, double boxWidth) {
    return WrapText(canvas, panel.caption, CaptionStyle, boxWidth - 2 * Inset, MostCaptionLines);
}

void DrawFooter(SheetCanvas& canvas, const Panel& panel, const PictureRect& box) {
    const double left = box.x + Inset;
    const double right = box.x + box.width - Inset;
    double y = box.y + box.height;
    FillRectangle(canvas.GetContext(), {box.x, y, box.width, StatusHeight}, StatusColor);
    const TextStyle status{12, false, Align::Left, QuietText};
    canvas.DrawText(left, y + 15, canvas.FitText(panel.view.statusText, status, right - left), status);
    y += StatusHeight + HeadingLine;

    const TextStyle time{14, false, Align::Right, QuietText};
    const TextStyle heading{17, true, Align::Left, HeadingText};
    canvas.DrawText(right, y, panel.time, time);
    const double headingWidth = right - left - canvas.MeasureText(panel.time, time) - Inset;
    canvas.DrawText(left, y, canvas.FitText(panel.heading, heading, headingWidth), heading);

    for (const std::string& line : CaptionLines(canvas, panel, box.width)) {
        y += CaptionLine;
        canvas.DrawText(left, y, line, CaptionStyle);
    }
}

}  // namespace

double FooterHeightOf(SheetCanvas& canvas, const Panel& panel, double boxWidth) {
    const auto lines = static_cast<double>(CaptionLines(canvas, panel, boxWidth).size());
    return StatusHeight + HeadingLine + lines * CaptionLine + FooterMargin;
}

void PanelPainter::DrawView(SheetCanvas& canvas, const viewer::ViewSnapshot& view, const PictureRect& rect) {
    if (viewer::IsShapeViewKind(view.kind)) {
        const Image image = m_scene.Render(view, static_cast<int>(std::lround(rect.width * PixelsPerUnit)),
                                           static_cast<int>(std::lround(rect.height * PixelsPerUnit)));
        canvas.DrawImage(image, rect.x, rect.y, rect.width, rect.height);
        return;
    }
    auto page = m_pages.find(view.kind);
    if (page == m_pages.end()) {
        page = m_pages.emplace(view.kind, PageRenderer(scene::MakePage(view.kind))).first;
    }
    page->second.Draw(canvas.GetContext(), view, rect);
}

void PanelPainter::Draw(SheetCanvas& canvas, const Panel& panel, const PictureRect& box, double footerHeight) {
    const PictureRect card{box.x, box.y, box.width, box.height + footerHeight};
    FillRectangle(canvas.GetContext(), card, CardColor);
    FillRectangle(canvas.GetContext(), box, EmptyColor);
    const PictureRect rect = FitView(panel.view, box);
    if (panel.view.kind.empty() || rect.width < 1 || rect.height < 1) {
        const TextStyle style{15, false, Align::Center, QuietText};
        canvas.DrawText(box.x + box.width / 2, box.y + box.height / 2, "no view", style);
    } else {
        DrawView(canvas, panel.view, rect);
        DrawOverlay(canvas, panel, rect);
    }
    DrawFooter(canvas, panel, box);
    DrawBorder(canvas.GetContext(), card);
}

}  // namespace replay
