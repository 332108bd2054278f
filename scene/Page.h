// What 2D views show: a page of areas, lines and text.
#pragma once

#include "host/dg/Color.h"
#include "host/dg/Point.h"
#include "scene/Polygon.h"

#include <string>
#include <vector>

namespace scene {

// Places and sizes are in model units about the origin, x to the right and y up. Areas are below lines, lines below
// text; what stands later is above what stands earlier.
struct PageArea {
    Loop outline;
    dg::Color fill;
};

struct PageLine {
    dg::DPoint2D from;
    dg::DPoint2D to;
    double width = 0.03;
    dg::Color color;
    bool dashed = false;
};

enum class TextAlign { Left, Center };

struct PageText {
    std::string text;
    dg::DPoint2D at;  // the left end, or the middle, of the base line
    double height = 0.3;
    TextAlign align = TextAlign::Left;
    dg::Color color;
};

struct Page {
    double width = 16;
    double height = 10;
    dg::Color paper{1, 1, 1, 1};
    std::vector<PageArea> areas;
    std::vector<PageLine> lines;
    std::vector<PageText> texts;
};

// The page of a kind of view: a picture for "imageview", an illustration of the built-in part with its names for
// "illustration2dview", and a technical drawing of that part for every other kind.
[[nodiscard]] Page MakePage(const std::string& kind);

}  // namespace scene
