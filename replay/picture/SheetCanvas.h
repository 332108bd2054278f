// A sheet of paper to draw on with cairo, as SVG or PNG.
#pragma once

#include "host/dg/Color.h"
#include "replay/picture/Image.h"

#include <cairo.h>

#include <memory>
#include <string>

namespace replay {

enum class SheetFormat { Svg, Png };

enum class Align { Left, Center, Right };

struct TextStyle {
    double size = 14;  // of the font
    bool bold = false;
    Align align = Align::Left;
    dg::Color color{0.13F, 0.15F, 0.19F, 1};
};

// Units are pixels of the PNG file, x to the right and y down from the upper left corner. Every fault of the drawing
// library is thrown as std::runtime_error with its cause, at the latest by Finish.
class SheetCanvas {
public:
    SheetCanvas(SheetFormat format, int width, int height);

    // For shapes; the canvas keeps it.
    [[nodiscard]] cairo_t* GetContext() const noexcept { return m_context.get(); }

    // Writes text on a base line. In SVG it stays text and comes above everything else. Bytes that are not UTF-8 and
    // control characters become question marks.
    void DrawText(double x, double y, const std::string& text, const TextStyle& style);
    // Writes a label of a picture: as shapes, which the picture's later shapes cover.
    void DrawLabel(double x, double y, const std::string& text, const TextStyle& style);
    [[nodiscard]] double MeasureText(const std::string& text, const TextStyle& style);
    // The text, or as much of it as fits into a width with an ellipsis behind it.
    [[nodiscard]] std::string FitText(const std::string& text, const TextStyle& style, double width);

    // Draws a picture into a rectangle; nothing for a picture without pixels.
    void DrawImage(const Image& image, double x, double y, double width, double height);

    // The bytes of the file. The canvas is of no use afterwards.
    [[nodiscard]] std::string Finish();

private:
    void SelectFont(const TextStyle& style);
    void MoveToText(double x, double y, const std::string& clean, const TextStyle& style);
    void Check() const;

    struct SurfaceDeleter {
        void operator()(cairo_surface_t* surface) const noexcept { cairo_surface_destroy(surface); }
    };
    struct ContextDeleter {
        void operator()(cairo_t* context) const noexcept { cairo_destroy(context); }
    };

    SheetFormat m_format;
    std::string m_bytes;    // what the surface has written
    std::string m_svgText;  // the text elements, for the end of the file
    std::unique_ptr<cairo_surface_t, SurfaceDeleter> m_surface;
    std::unique_ptr<cairo_t, ContextDeleter> m_context;
};

// Sets the colour of what is drawn next.
void SetColor(cairo_t* context, const dg::Color& color);

}  // namespace replay
