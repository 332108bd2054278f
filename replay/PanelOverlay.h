// What a storyboard draws over the picture of a view.
#pragma once

#include "replay/PageRenderer.h"
#include "replay/SheetCanvas.h"
#include "replay/Storyboard.h"

namespace replay {

// Draws the directions of the world's axes into a corner of a shape view, a selection drag, the trails of the fingers
// and the fingers themselves, and the mark of an open context menu. Nothing leaves the rectangle.
void DrawOverlay(SheetCanvas& canvas, const Panel& panel, const PictureRect& rect);

}  // namespace replay
