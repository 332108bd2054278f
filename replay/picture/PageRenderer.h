// Draws what a 2D view shows.
#pragma once

#include "host/dg/Point.h"
#include "scene/Page.h"
#include "viewer/ViewSnapshot.h"

#include <cairo.h>

#include <map>
#include <memory>

namespace replay {

// Where a picture stands on a sheet, in sheet units from the upper left corner.
struct PictureRect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;
};

// Draws one page as views show it. What several pictures of a sheet have in common, which is nearly all, stands once in
// the file.
class PageRenderer {
public:
    explicit PageRenderer(scene::Page page);

    // The visible width fills the rectangle's, and what lies outside is cut off. Only a desk colour for a view that can
    // show nothing, such as one without a width.
    void Draw(cairo_t* context, const viewer::ViewSnapshot& view, const PictureRect& rect);

private:
    struct SurfaceDeleter {
        void operator()(cairo_surface_t* surface) const noexcept { cairo_surface_destroy(surface); }
    };

    // The page with lines that can be seen when it is drawn smaller by a power of two.
    cairo_surface_t* SymbolFor(int halvings);

    scene::Page m_page;
    std::map<int, std::unique_ptr<cairo_surface_t, SurfaceDeleter>> m_symbols;
};

}  // namespace replay
