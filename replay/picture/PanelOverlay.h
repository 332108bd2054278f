// What a storyboard draws over the picture of a view.
#pragma once

#include "replay/picture/PageRenderer.h"
#include "replay/picture/SheetCanvas.h"
#include "replay/picture/Storyboard.h"

#include <vector>

namespace replay {

// Draws the directions of the world's axes into a corner of a shape view, a selection drag, the trails of the fingers
// and the fingers themselves, and the mark of an open context menu. Nothing leaves the rectangle.
void DrawOverlay(SheetCanvas& canvas, const Panel& panel, const PictureRect& rect);

// Writes what the circles of the panels mean, as far as there are any, on a base line up to a right end. Answers how
// wide that is, with a gap to what stands on its left; 0 without circles.
double DrawLegend(SheetCanvas& canvas, const std::vector<Panel>& panels, double right, double baseLine);

}  // namespace replay
