// Three pages: a drawing and an illustration, projected from the model of the 3D view, and a landscape for images. No
// page is symmetric, so that a picture shows which part of it is seen.
#include "scene/Page.h"

#include "host/dg/Location.h"
#include "scene/MachinePart.h"
#include "scene/ProjectedEdges.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

namespace scene {
namespace {

constexpr dg::Color Ink{0.10F, 0.12F, 0.16F, 1};
constexpr dg::Color ThinInk{0.22F, 0.36F, 0.62F, 1};
constexpr dg::Color FaintInk{0.62F, 0.65F, 0.70F, 1};
constexpr dg::Color NoteInk{0.62F, 0.14F, 0.16F, 1};

constexpr double OutlineWidth = 0.035;
constexpr double ThinWidth = 0.015;
constexpr double LabelHeight = 0.24;

void AddLoopLines(Page& page, const Loop& loop, double width, const dg::Color& color) {
    for (std::size_t i = 0; i < loop.size(); ++i) {
        page.lines.push_back({loop[i], loop[(i + 1) % loop.size()], width, color, false});
    }
}

void AddFrame(Page& page) {
    const double x = page.width / 2 - 0.3;
    const double y = page.height / 2 - 0.3;
    AddLoopLines(page, MakeRectangle(-x, -y, x, y), 0.05, Ink);
    AddLoopLines(page, MakeRectangle(-x - 0.18, -y - 0.18, x + 0.18, y + 0.18), ThinWidth, Ink);
}

void AddTitleBlock(Page& page, const std::string& title) {
    const dg::DPoint2D corner{page.width / 2 - 0.3, -page.height / 2 + 0.3};
    const double left = corner.x - 5.4;
    AddLoopLines(page, MakeRectangle(left, corner.y, corner.x, corner.y + 1.5), OutlineWidth, Ink);
    page.lines.push_back({{left, corner.y + 0.6}, {corner.x, corner.y + 0.6}, ThinWidth, Ink, false});
    page.lines.push_back({{left + 3.4, corner.y}, {left + 3.4, corner.y + 0.6}, ThinWidth, Ink, false});
    page.texts.push_back({title, {left + 0.25, corner.y + 0.88}, 0.42, TextAlign::Left, Ink});
    page.texts.push_back({"scale 1 : 1", {left + 0.25, corner.y + 0.2}, LabelHeight, TextAlign::Left, Ink});
    page.texts.push_back({"sheet 1", {left + 3.65, corner.y + 0.2}, LabelHeight, TextAlign::Left, Ink});
}

// Hidden lines go first, so that visible ones cover them.
void AddProjection(Page& page, const Model& model, const dg::Location& frame, const dg::DPoint2D& center,
                   bool showHidden) {
    std::vector<ProjectedLine> lines = ProjectEdges(model, frame);
    std::stable_partition(lines.begin(), lines.end(), [](const ProjectedLine& line) { return line.hidden; });
    for (const ProjectedLine& line : lines) {
        if (line.hidden && !showHidden) {
            continue;
        }
        page.lines.push_back({{center.x + line.from.x, center.y + line.from.y},
                              {center.x + line.to.x, center.y + line.to.y},
                              line.hidden ? ThinWidth : OutlineWidth,
                              line.hidden ? FaintInk : Ink,
                              line.hidden});
    }
}

void AddArrowHead(Page& page, const dg::DPoint2D& tip, double dx, double dy) {
    const double length = 0.2;
    const double half = 0.06;
    page.areas.push_back({{tip,
                           {tip.x - dx * length - dy * half, tip.y - dy * length + dx * half},
                           {tip.x - dx * length + dy * half, tip.y - dy * length - dx * half}},
                          ThinInk});
}

std::string FormatLength(double length) {
    char text[32];
    std::snprintf(text, sizeof text, "%.2f", length);
    return text;
}

void AddWidthDimension(Page& page, double left, double right, double y, double objectY) {
    page.lines.push_back({{left, y}, {right, y}, ThinWidth, ThinInk, false});
    for (const double x : {left, right}) {
        page.lines.push_back({{x, objectY}, {x, y + std::copysign(0.12, y - objectY)}, ThinWidth, ThinInk, false});
    }
    AddArrowHead(page, {left, y}, -1, 0);
    AddArrowHead(page, {right, y}, 1, 0);
    page.texts.push_back(
        {FormatLength(right - left), {(left + right) / 2, y + 0.08}, LabelHeight, TextAlign::Center, ThinInk});
}

void AddHeightDimension(Page& page, double bottom, double top, double x, double objectX) {
    page.lines.push_back({{x, bottom}, {x, top}, ThinWidth, ThinInk, false});
    for (const double y : {bottom, top}) {
        page.lines.push_back({{objectX, y}, {x + std::copysign(0.12, x - objectX), y}, ThinWidth, ThinInk, false});
    }
    AddArrowHead(page, {x, bottom}, 0, -1);
    AddArrowHead(page, {x, top}, 0, 1);
    page.texts.push_back(
        {FormatLength(top - bottom), {x + 0.12, (bottom + top) / 2 - 0.1}, LabelHeight, TextAlign::Left, ThinInk});
}

void AddCenterLine(Page& page, const dg::DPoint2D& from, const dg::DPoint2D& to) {
    page.lines.push_back({from, to, ThinWidth, NoteInk, true});
}

Page MakeDrawing() {
    Page page;
    AddFrame(page);
    AddTitleBlock(page, "BEARING BLOCK");
    const std::shared_ptr<const Model> model = MakeMachinePart();
    const dg::DBox box = model->GetBounds();
    constexpr double shaftHeight = 0.25;

    const dg::DPoint2D front{-3.9, 2.35};
    AddProjection(page, *model, {{1, 0, 0}, {0, 0, 1}, {0, -1, 0}, {}}, front, true);
    AddWidthDimension(page, front.x + box.min.x, front.x + box.max.x, front.y - 2.05, front.y + box.min.z - 0.08);
    AddHeightDimension(page, front.y + box.min.z, front.y + box.max.z, front.x + 3.35, front.x + box.max.x + 0.08);
    AddCenterLine(page, {front.x - 3.2, front.y + shaftHeight}, {front.x + 3.2, front.y + shaftHeight});
    page.texts.push_back({"front", {front.x - 3, front.y + 1.95}, LabelHeight, TextAlign::Left, NoteInk});

    const dg::DPoint2D top{-3.9, -2.45};
    AddProjection(page, *model, {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {}}, top, false);
    AddHeightDimension(page, top.y + box.min.y, top.y + box.max.y, top.x + 3.35, top.x + box.max.x + 0.08);
    AddCenterLine(page, {top.x - 3.2, top.y}, {top.x + 3.2, top.y});
    page.texts.push_back({"top", {top.x - 3, top.y + 1.9}, LabelHeight, TextAlign::Left, NoteInk});

    const dg::DPoint2D side{4.1, 2.35};
    AddProjection(page, *model, {{0, 1, 0}, {0, 0, 1}, {1, 0, 0}, {}}, side, false);
    AddWidthDimension(page, side.x + box.min.y, side.x + box.max.y, side.y - 2.05, side.y + box.min.z - 0.08);
    AddCenterLine(page, {side.x, side.y - 1.9}, {side.x, side.y + 1.8});
    AddCenterLine(page, {side.x - 1.4, side.y + shaftHeight}, {side.x + 1.4, side.y + shaftHeight});
    page.texts.push_back({"right", {side.x - 1.8, side.y + 1.95}, LabelHeight, TextAlign::Left, NoteInk});
    return page;
}

struct Callout {
    const char* name;
    dg::DPoint3D point;  // on the part
    dg::DPoint2D label;  // on the page
};

void AddCallout(Page& page, const Callout& callout, const dg::DPoint2D& target, const std::string& number) {
    constexpr double radius = 0.34;
    const dg::DPoint2D& label = callout.label;
    const double distance = std::hypot(target.x - label.x, target.y - label.y);
    const dg::DPoint2D start{label.x + (target.x - label.x) * radius / distance,
                             label.y + (target.y - label.y) * radius / distance};
    page.lines.push_back({start, target, ThinWidth, NoteInk, false});
    page.areas.push_back({MakeCircle(target, 0.07, 16), NoteInk});
    page.areas.push_back({MakeCircle(label, radius, 32), {0.98F, 0.90F, 0.80F, 1}});
    AddLoopLines(page, MakeCircle(label, radius, 32), ThinWidth, NoteInk);
    page.texts.push_back({number, {label.x, label.y - 0.17}, 0.34, TextAlign::Center, NoteInk});
    // On the side away from the leader line.
    const double nameY = target.y < label.y ? label.y + 0.46 : label.y - 0.74;
    page.texts.push_back({callout.name, {label.x, nameY}, 0.28, TextAlign::Center, Ink});
}

Page MakeIllustration() {
    Page page;
    page.paper = {0.99F, 0.98F, 0.95F, 1};
    AddFrame(page);
    // Looking down from the front right; the frame is orthonormal to single precision.
    dg::Location frame({0.8F, 0.6F, 0}, {-0.3F, 0.4F, 0.866F}, {0.52F, -0.69F, 0.5F}, {});
    frame.Sanitize();
    const dg::DPoint2D center{-0.2, -0.2};
    AddProjection(page, *MakeMachinePart(), frame, center, false);

    const std::array<Callout, 7> callouts = {{{"base", {-2.2, -1.8, -1.5}, {-6.9, -3.2}},
                                              {"upright", {-1.4, -1.28, 0.0}, {-6.9, 0.2}},
                                              {"cover", {-1.9, -1.2, 1.47}, {-6.9, 2.6}},
                                              {"arrow", {-0.8, 0.1, 1.63}, {-1.0, 3.75}},
                                              {"flange", {1.2, 0.2, 1.25}, {3.4, 3.6}},
                                              {"shaft", {2.75, 0.1, 0.4}, {5.6, 2.4}},
                                              {"rib", {0.3, -0.16, -1.1}, {4.6, -3.6}}}};
    int number = 1;
    for (const Callout& callout : callouts) {
        const dg::DVec3 local = dg::DMat33(frame.GetMat()) * (callout.point - dg::DPoint3D::ORIGIN);
        AddCallout(page, callout, {center.x + local.x, center.y + local.y}, std::to_string(number++));
    }
    return page;
}

// A hilly outline between two x, closed along the lower edge.
Loop MakeHills(double base, double amplitude, double phase) {
    Loop hills;
    constexpr int steps = 80;
    for (int i = 0; i <= steps; ++i) {
        const double x = -8 + 16.0 * i / steps;
        hills.emplace_back(x, base + amplitude * (std::sin(0.55 * x + phase) + 0.35 * std::sin(1.7 * x + 2 * phase)));
    }
    hills.emplace_back(8, -5);
    hills.emplace_back(-8, -5);
    return hills;
}

void AddSky(Page& page) {
    constexpr int bands = 24;
    for (int i = 0; i < bands; ++i) {
        const float share = static_cast<float>(i) / bands;
        const double bottom = -1 + 6.0 * i / bands;
        // Each band reaches up to the page's edge, so that no seam shows between two of them.
        page.areas.push_back({MakeRectangle(-8, bottom, 8, 5),
                              {0.96F - 0.55F * share, 0.88F - 0.26F * share, 0.76F + 0.16F * share, 1}});
    }
    page.areas.push_back({MakeCircle({4.6, 2.9}, 0.95, 48), {1.0F, 0.86F, 0.40F, 1}});
}

void AddHouse(Page& page, const dg::DPoint2D& at) {
    page.areas.push_back({MakeRectangle(at.x, at.y, at.x + 2, at.y + 1.3), {0.93F, 0.91F, 0.86F, 1}});
    page.areas.push_back(
        {{{at.x - 0.25, at.y + 1.3}, {at.x + 2.25, at.y + 1.3}, {at.x + 1, at.y + 2.2}}, {0.70F, 0.24F, 0.18F, 1}});
    page.areas.push_back({MakeRectangle(at.x + 0.8, at.y, at.x + 1.2, at.y + 0.75), {0.35F, 0.24F, 0.18F, 1}});
    for (const double x : {0.25, 1.4}) {
        page.areas.push_back(
            {MakeRectangle(at.x + x, at.y + 0.55, at.x + x + 0.35, at.y + 0.95), {0.45F, 0.66F, 0.82F, 1}});
    }
}

void AddTree(Page& page, const dg::DPoint2D& at, double size) {
    page.areas.push_back(
        {MakeRectangle(at.x - 0.08 * size, at.y, at.x + 0.08 * size, at.y + 0.5 * size), {0.38F, 0.26F, 0.18F, 1}});
    for (int i = 0; i < 3; ++i) {
        const double bottom = at.y + (0.4 + 0.45 * i) * size;
        const double half = (0.62 - 0.14 * i) * size;
        page.areas.push_back(
            {{{at.x - half, bottom}, {at.x + half, bottom}, {at.x, bottom + 0.8 * size}}, {0.10F, 0.38F, 0.25F, 1}});
    }
}

// A landscape whose four quarters differ: mountain, sun, house, trees.
Page MakePicture() {
    Page page;
    page.paper = {0.95F, 0.87F, 0.75F, 1};
    AddSky(page);
    page.areas.push_back(
        {{{-8, 0.2}, {-6.8, 1.6}, {-5.9, 1.1}, {-4.3, 3.9}, {-2.6, 1.4}, {-1.9, 1.9}, {1.2, -0.9}, {0, -3}, {-8, -3}},
         {0.47F, 0.51F, 0.62F, 1}});
    page.areas.push_back(
        {{{-4.3, 3.9}, {-4.95, 2.75}, {-4.5, 2.9}, {-4.2, 2.6}, {-3.95, 2.95}, {-3.6, 2.87}}, {0.97F, 0.98F, 1.0F, 1}});
    page.areas.push_back({MakeHills(-0.6, 0.45, 0.4), {0.55F, 0.70F, 0.45F, 1}});
    page.areas.push_back({MakeHills(-1.9, 0.40, 2.1), {0.38F, 0.60F, 0.34F, 1}});
    page.areas.push_back({MakeHills(-3.6, 0.22, 4.0), {0.24F, 0.48F, 0.28F, 1}});
    AddHouse(page, {-5.2, -2.6});
    AddTree(page, {3.2, -2.9}, 1.1);
    AddTree(page, {5.0, -3.4}, 1.5);
    AddTree(page, {6.6, -2.7}, 1.0);
    AddLoopLines(page, MakeRectangle(-8, -5, 8, 5), 0.06, Ink);
    return page;
}

}  // namespace

Page MakePage(const std::string& kind) {
    if (kind == "imageview") {
        return MakePicture();
    }
    if (kind == "illustration2dview") {
        return MakeIllustration();
    }
    return MakeDrawing();
}

}  // namespace scene
