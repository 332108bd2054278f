// Draws what a 2D view shows.
#pragma once

#include "host/dg/Point.h"
#include "viewer/Page.h"
#include "viewer/ViewSnapshot.h"

#include <cairo.h>

namespace replay {

// Where a picture stands on a sheet, in sheet units from the upper left corner.
struct PictureRect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;
};

// Draws the page as a view shows it: its visible width fills the rectangle's, and what lies outside is cut off. Only a
// desk colour for a view that can show nothing, such as one without a width.
void DrawPage(cairo_t* context, const viewer::Page& page, const viewer::ViewSnapshot& view, const PictureRect& rect);

}  // namespace replay
