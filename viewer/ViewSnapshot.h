// What a view shows at one moment, as plain data that a program can draw or compare.
#pragma once

#include "host/dg/Camera3D.h"
#include "host/dg/Color.h"
#include "host/dg/Location.h"
#include "host/dg/Point.h"

#include <optional>
#include <string>
#include <vector>

namespace viewer {

// A line of a markup, with a ball at its end when the radius is above 0. Lengths are in the length unit of the markup,
// which is drawn at a fixed share of the view: the line's direction and proportions count, not its world size.
struct MarkupLine {
    dg::DPoint3D origin;  // world
    dg::DVec3 direction;  // in markup units, from the origin
    double width = 0;
    double ballRadius = 0;
    dg::Color color;
};

// A rectangle in view pixels that a selection drag draws.
struct RubberBand {
    int x0 = 0;
    int y0 = 0;
    int x1 = 0;
    int y1 = 0;
};

struct ViewSnapshot {
    std::string kind;  // one of ViewKinds; empty when no view is attached
    unsigned int width = 0;
    unsigned int height = 0;
    dg::Camera3D camera;      // shape views
    dg::DPoint3D spinCenter;  // shape views; world
    dg::Location placement;   // 2D views: the centre of the visible area and the axes
    double orthoWidth = 0;    // 2D views: visible width in model units
    std::vector<MarkupLine> markups;
    std::optional<RubberBand> rubberBand;
    std::vector<std::string> selectedParts;
    std::optional<std::string> contextMenu;  // the part, or empty text for none, whose context actions are open
    dg::DPoint2D contextMenuAt;
    std::string statusText;
    std::optional<std::string> preselectedPart;  // highlighted ahead of a click
};

}  // namespace viewer
