// One drawing for both formats. Only text differs: an SVG file keeps it as text, which can be searched, above
// everything else; a PNG file gets it drawn. Labels that something may cover are shapes in both.
#include "replay/picture/SheetCanvas.h"

#include "replay/files/CleanText.h"

#include <cairo-svg.h>

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace replay {

namespace {

constexpr const char* FontFamily = "sans-serif";

cairo_status_t AppendBytes(void* closure, const unsigned char* data, unsigned int length) {
    static_cast<std::string*>(closure)->append(reinterpret_cast<const char*>(data), length);
    return CAIRO_STATUS_SUCCESS;
}

void ThrowOn(cairo_status_t status) {
    if (status != CAIRO_STATUS_SUCCESS) {
        throw std::runtime_error(cairo_status_to_string(status));
    }
}

std::string EscapeXml(const std::string& text) {
    std::string escaped;
    for (const char c : text) {
        switch (c) {
        case '&': escaped += "&amp;"; break;
        case '<': escaped += "&lt;"; break;
        case '>': escaped += "&gt;"; break;
        case '"': escaped += "&quot;"; break;
        default: escaped += c;
        }
    }
    return escaped;
}

std::string SvgText(double x, double y, const std::string& text, const TextStyle& style) {
    const auto byte = [](float value) { return static_cast<unsigned>(std::lround(value * 255.0F)); };
    std::array<char, 256> start{};
    const char* anchor = style.align == Align::Center  ? " text-anchor=\"middle\""
                         : style.align == Align::Right ? " text-anchor=\"end\""
                                                       : "";
    std::snprintf(start.data(), start.size(),
                  "<text x=\"%.2f\" y=\"%.2f\" font-family=\"%s\" font-size=\"%.2f\"%s%s fill=\"#%02x%02x%02x\">", x, y,
                  FontFamily, style.size, style.bold ? " font-weight=\"bold\"" : "", anchor, byte(style.color.red),
                  byte(style.color.green), byte(style.color.blue));
    return start.data() + EscapeXml(text) + "</text>\n";
}

}  // namespace

SheetCanvas::SheetCanvas(SheetFormat format, int width, int height) : m_format(format) {
    if (format == SheetFormat::Svg) {
        m_surface.reset(cairo_svg_surface_create_for_stream(&AppendBytes, &m_bytes, width, height));
        cairo_svg_surface_set_document_unit(m_surface.get(), CAIRO_SVG_UNIT_PX);
    } else {
        m_surface.reset(cairo_image_surface_create(CAIRO_FORMAT_RGB24, width, height));
    }
    ThrowOn(cairo_surface_status(m_surface.get()));
    m_context.reset(cairo_create(m_surface.get()));
    Check();
}

void SheetCanvas::SelectFont(const TextStyle& style) {
    cairo_select_font_face(GetContext(), FontFamily, CAIRO_FONT_SLANT_NORMAL,
                           style.bold ? CAIRO_FONT_WEIGHT_BOLD : CAIRO_FONT_WEIGHT_NORMAL);
    cairo_set_font_size(GetContext(), style.size);
}

void SheetCanvas::DrawText(double x, double y, const std::string& text, const TextStyle& style) {
    const std::string clean = CleanText(text);
    if (clean.empty()) {
        return;
    }
    if (m_format == SheetFormat::Svg) {
        m_svgText += SvgText(x, y, clean, style);
        return;
    }
    MoveToText(x, y, clean, style);
    SetColor(GetContext(), style.color);
    cairo_show_text(GetContext(), clean.c_str());
    cairo_new_path(GetContext());
    Check();
}

void SheetCanvas::DrawLabel(double x, double y, const std::string& text, const TextStyle& style) {
    const std::string clean = CleanText(text);
    MoveToText(x, y, clean, style);
    SetColor(GetContext(), style.color);
    cairo_text_path(GetContext(), clean.c_str());
    cairo_fill(GetContext());
    Check();
}

void SheetCanvas::MoveToText(double x, double y, const std::string& clean, const TextStyle& style) {
    const double width = MeasureText(clean, style);
    const double shift = style.align == Align::Center ? width / 2 : style.align == Align::Right ? width : 0;
    cairo_move_to(GetContext(), x - shift, y);
}

double SheetCanvas::MeasureText(const std::string& text, const TextStyle& style) {
    SelectFont(style);
    cairo_text_extents_t extents{};
    cairo_text_extents(GetContext(), CleanText(text).c_str(), &extents);
    Check();
    return extents.x_advance;
}

std::string SheetCanvas::FitText(const std::string& text, const TextStyle& style, double width) {
    // No line of a sheet holds more, and measuring would take long.
    constexpr std::size_t mostBytes = 1000;
    std::string fitting = CleanText(text.substr(0, mostBytes));
    if (text.size() <= mostBytes && MeasureText(fitting, style) <= width) {
        return fitting;
    }
    const std::string ellipsis = "\u2026";
    while (!fitting.empty() && MeasureText(fitting + ellipsis, style) > width) {
        do {
            fitting.pop_back();
        } while (!fitting.empty() && (static_cast<unsigned char>(fitting.back()) & 0x80U) != 0 &&
                 CleanText(fitting) != fitting);
    }
    return fitting + ellipsis;
}

void SheetCanvas::DrawImage(const Image& image, double x, double y, double width, double height) {
    if (image.width <= 0 || image.height <= 0) {
        return;
    }
    const std::unique_ptr<cairo_surface_t, SurfaceDeleter> picture(
        cairo_image_surface_create(CAIRO_FORMAT_RGB24, image.width, image.height));
    ThrowOn(cairo_surface_status(picture.get()));
    unsigned char* rows = cairo_image_surface_get_data(picture.get());
    const int stride = cairo_image_surface_get_stride(picture.get());
    for (int row = 0; row < image.height; ++row) {
        auto* pixels = reinterpret_cast<std::uint32_t*>(rows + static_cast<std::ptrdiff_t>(row) * stride);
        for (int column = 0; column < image.width; ++column) {
            pixels[column] = image.At(column, row);
        }
    }
    cairo_surface_mark_dirty(picture.get());

    cairo_save(GetContext());
    cairo_rectangle(GetContext(), x, y, width, height);
    cairo_clip(GetContext());
    cairo_translate(GetContext(), x, y);
    cairo_scale(GetContext(), width / image.width, height / image.height);
    cairo_set_source_surface(GetContext(), picture.get(), 0, 0);
    cairo_pattern_set_filter(cairo_get_source(GetContext()), CAIRO_FILTER_GOOD);
    cairo_pattern_set_extend(cairo_get_source(GetContext()), CAIRO_EXTEND_PAD);
    cairo_paint(GetContext());
    cairo_restore(GetContext());
    Check();
}

std::string SheetCanvas::Finish() {
    Check();
    m_context.reset();
    if (m_format == SheetFormat::Png) {
        ThrowOn(cairo_surface_write_to_png_stream(m_surface.get(), &AppendBytes, &m_bytes));
        return std::move(m_bytes);
    }
    cairo_surface_finish(m_surface.get());
    ThrowOn(cairo_surface_status(m_surface.get()));
    const std::size_t end = m_bytes.rfind("</svg>");
    if (end == std::string::npos) {
        throw std::runtime_error("the drawing has no end");
    }
    m_bytes.insert(end, m_svgText);
    return std::move(m_bytes);
}

void SheetCanvas::Check() const {
    ThrowOn(cairo_status(m_context.get()));
}

void SetColor(cairo_t* context, const dg::Color& color) {
    cairo_set_source_rgba(context, static_cast<double>(color.red), static_cast<double>(color.green),
                          static_cast<double>(color.blue), static_cast<double>(color.alpha));
}

}  // namespace replay
