// A sheet of pictures that shows at a glance what the touch did.
#pragma once

#include "host/dg/Point.h"
#include "scene/Model.h"
#include "viewer/ViewSnapshot.h"

#include <memory>
#include <string>
#include <vector>

namespace replay {

// The path of one finger up to a panel's moment, in view pixels, oldest first.
struct Trail {
    int finger = 0;  // a small running number, for the colour
    std::vector<dg::DPoint2D> points;
    bool down = true;  // whether the finger is on the screen at the moment
};

// One picture: the view at a moment, with the fingers and their trails over it.
struct Panel {
    viewer::ViewSnapshot view;
    std::vector<Trail> trails;
    std::string heading;  // gesture name, as "Spin" or "Start"
    std::string time;     // as "0.42 s"
    std::string caption;  // what happened, as "turned 74 degrees"
};

struct Sheet {
    std::string title;
    std::string subtitle;
    std::vector<Panel> panels;
    std::shared_ptr<const scene::Model> model;  // may be null
};

// Draws the sheet for a .svg or .png file (by the ending of the path) and answers the file's bytes. Throws
// std::runtime_error with the path and the fault.
[[nodiscard]] std::string DrawStoryboard(const Sheet& sheet, const std::string& path);

}  // namespace replay
