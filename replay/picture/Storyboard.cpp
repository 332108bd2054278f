// Lays a sheet out as a grid of three or four columns. All rows have one height, that of the tallest view and the
// longest caption, so panels are measured before the first is drawn.
#include "replay/picture/Storyboard.h"

#include "replay/picture/PanelOverlay.h"
#include "replay/picture/PanelPainter.h"
#include "replay/picture/SheetCanvas.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <stdexcept>

namespace replay {

namespace {

constexpr int SheetWidth = 1600;
constexpr double SheetMargin = 28;
constexpr double Gap = 18;
constexpr double HeaderHeight = 104;
constexpr dg::Color PaperColor{0.965F, 0.968F, 0.975F, 1};

SheetFormat FormatOf(const std::string& path) {
    const std::string ending = std::filesystem::path(path).extension().string();
    if (ending == ".svg") {
        return SheetFormat::Svg;
    }
    if (ending == ".png") {
        return SheetFormat::Png;
    }
    throw std::runtime_error(path + ": a storyboard is a .svg or a .png file");
}

// Where the pictures stand.
struct Grid {
    std::size_t columns;
    std::size_t rows;
    double boxWidth;
    double boxHeight;
    double footerHeight = 0;  // that of the panel with the longest caption, so that the rows are even

    explicit Grid(const std::vector<Panel>& panels) {
        const std::size_t count = std::max<std::size_t>(panels.size(), 1);
        // Few panels get large pictures; a last row of four that is half empty looks worse than rows of three.
        columns = count <= 3 || count == 5 || count == 6 || count == 9 ? 3 : 4;
        rows = (count + columns - 1) / columns;
        boxWidth =
            (SheetWidth - 2 * SheetMargin - Gap * static_cast<double>(columns - 1)) / static_cast<double>(columns);
        // One height for all, so that the rows are even: that of the tallest view, within reason.
        double proportion = 0.5;
        for (const Panel& panel : panels) {
            if (panel.view.width > 0) {
                proportion = std::max(proportion, static_cast<double>(panel.view.height) / panel.view.width);
            }
        }
        boxHeight = std::round(boxWidth * std::min(proportion, 1.0));
        SheetCanvas ruler(SheetFormat::Png, 1, 1);
        for (const Panel& panel : panels) {
            footerHeight = std::max(footerHeight, FooterHeightOf(ruler, panel, boxWidth));
        }
    }

    [[nodiscard]] double RowHeight() const { return boxHeight + footerHeight + Gap; }
    [[nodiscard]] int SheetHeight() const {
        return static_cast<int>(std::ceil(HeaderHeight + static_cast<double>(rows) * RowHeight() - Gap + SheetMargin));
    }
    [[nodiscard]] PictureRect BoxAt(std::size_t index) const {
        const std::size_t row = index / columns;
        const std::size_t column = index % columns;
        return {SheetMargin + static_cast<double>(column) * (boxWidth + Gap),
                HeaderHeight + static_cast<double>(row) * RowHeight(), boxWidth, boxHeight};
    }
};

std::string DrawSheet(const Sheet& sheet, SheetFormat format) {
    const Grid grid(sheet.panels);
    SheetCanvas canvas(format, SheetWidth, grid.SheetHeight());
    SetColor(canvas.GetContext(), PaperColor);
    cairo_paint(canvas.GetContext());

    const TextStyle title{30, true, Align::Left, TextStyle{}.color};
    const TextStyle subtitle{17, false, Align::Left, {0.36F, 0.39F, 0.44F, 1}};
    const double width = SheetWidth - 2 * SheetMargin;
    const double legend = DrawLegend(canvas, sheet.panels, SheetWidth - SheetMargin, 50);
    canvas.DrawText(SheetMargin, 50, canvas.FitText(sheet.title, title, width - legend), title);
    canvas.DrawText(SheetMargin, 80, canvas.FitText(sheet.subtitle, subtitle, width), subtitle);

    PanelPainter painter(sheet.model);
    for (std::size_t i = 0; i < sheet.panels.size(); ++i) {
        painter.Draw(canvas, sheet.panels[i], grid.BoxAt(i), grid.footerHeight);
    }
    return canvas.Finish();
}

}  // namespace

std::string DrawStoryboard(const Sheet& sheet, const std::string& path) {
    const SheetFormat format = FormatOf(path);
    try {
        return DrawSheet(sheet, format);
    } catch (const std::runtime_error& fault) {
        // The drawing library's own messages do not know the file.
        throw std::runtime_error(path + ": cannot be drawn: " + fault.what());
    }
}

}  // namespace replay
