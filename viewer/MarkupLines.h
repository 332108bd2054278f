// Reads what a markup shows out of its content tree.
#pragma once

#include "host/dg/Point.h"
#include "host/hxk/Markup.h"
#include "viewer/ViewSnapshot.h"

#include <vector>

namespace viewer {

// Appends the visible lines of a markup in the order of its content tree, one for each stretch between two points. The
// ball of a line's head comes with its last stretch.
void AppendMarkupLines(const hxk::Markup& markup, std::vector<MarkupLine>& lines);

// The position of the placement of the markup's first line; the origin when it has no line.
[[nodiscard]] dg::DPoint3D GetMarkupPosition(const hxk::Markup& markup);

}  // namespace viewer
