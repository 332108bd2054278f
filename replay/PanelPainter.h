// Draws one picture of a storyboard with everything that stands over and under it.
#pragma once

#include "replay/PageRenderer.h"
#include "replay/SceneRenderer.h"
#include "replay/SheetCanvas.h"
#include "replay/Storyboard.h"
#include "viewer/Model.h"
#include "viewer/Page.h"

#include <map>
#include <memory>
#include <string>
#include <utility>

namespace replay {

// What a panel needs below its picture box, in sheet units: the status bar, the heading and two lines of caption.
inline constexpr double PanelFooterHeight = 106;

class PanelPainter {
public:
    explicit PanelPainter(std::shared_ptr<const viewer::Model> model) : m_scene(std::move(model)) {}

    // Draws a panel whose picture fits into the box, with the rest below the box.
    void Draw(SheetCanvas& canvas, const Panel& panel, const PictureRect& box);

private:
    void DrawView(SheetCanvas& canvas, const viewer::ViewSnapshot& view, const PictureRect& rect);

    SceneRenderer m_scene;
    std::map<std::string, viewer::Page> m_pages;  // by kind of view
};

}  // namespace replay
