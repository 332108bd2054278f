// Draws one picture of a storyboard with everything that stands over and under it.
#pragma once

#include "replay/picture/PageRenderer.h"
#include "replay/picture/SceneRenderer.h"
#include "replay/picture/SheetCanvas.h"
#include "replay/picture/Storyboard.h"
#include "scene/Model.h"
#include "scene/Page.h"

#include <map>
#include <memory>
#include <string>
#include <utility>

namespace replay {

// What a panel needs below its picture box: the status bar, the heading and its caption's lines, as many as it has but
// not without end. Sheet units; the canvas is for measuring only.
[[nodiscard]] double FooterHeightOf(SheetCanvas& canvas, const Panel& panel, double boxWidth);

class PanelPainter {
public:
    explicit PanelPainter(std::shared_ptr<const scene::Model> model) : m_scene(std::move(model)) {}

    // Draws a panel whose picture fits into the box, with the rest below the box.
    void Draw(SheetCanvas& canvas, const Panel& panel, const PictureRect& box, double footerHeight);

private:
    void DrawView(SheetCanvas& canvas, const viewer::ViewSnapshot& view, const PictureRect& rect);

    SceneRenderer m_scene;
    std::map<std::string, PageRenderer> m_pages;  // by kind of view
};

}  // namespace replay
