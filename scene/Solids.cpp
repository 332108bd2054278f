// Triangles run counter-clockwise seen from outside: an extrusion puts its loops the right way round first. A
// revolution has one vertex for a point on its axis, so that no triangle is without area.
#include "scene/Solids.h"

#include "host/dg/Functions.h"

#include <algorithm>
#include <cstdint>
#include <numbers>

namespace scene {
namespace {

std::uint32_t AddVertex(Part& part, dg::DPoint3D local, const dg::Location& placement) {
    local *= placement;
    part.vertices.push_back(local);
    return static_cast<std::uint32_t>(part.vertices.size() - 1);
}

// Counter-clockwise seen from outside. A corner that stands twice leaves one triangle.
void AddQuad(Part& part, std::uint32_t a, std::uint32_t b, std::uint32_t c, std::uint32_t d) {
    if (a != b && b != c) {
        part.triangles.push_back({a, b, c});
    }
    if (c != d && d != a) {
        part.triangles.push_back({a, c, d});
    }
}

Loop Directed(Loop loop, bool counterClockwise) {
    if ((GetSignedArea(loop) > 0) != counterClockwise) {
        std::reverse(loop.begin(), loop.end());
    }
    return loop;
}

}  // namespace

void AddBox(Part& part, const dg::DPoint3D& low, const dg::DPoint3D& high) {
    dg::Location placement;
    placement.SetPos({0, 0, low.z});
    AddExtrusion(part, MakeRectangle(low.x, low.y, high.x, high.y), {}, placement, high.z - low.z);
}

void AddExtrusion(Part& part, const Loop& outline, const std::vector<Loop>& holes, const dg::Location& placement,
                  double depth) {
    std::vector<Loop> loops = {Directed(outline, true)};
    for (const Loop& hole : holes) {
        loops.push_back(Directed(hole, false));
    }
    const std::vector<Triangle> caps = TriangulatePolygon(loops.front(), {loops.begin() + 1, loops.end()});

    const auto first = static_cast<std::uint32_t>(part.vertices.size());
    for (const Loop& loop : loops) {
        for (const dg::DPoint2D& point : loop) {
            AddVertex(part, {point.x, point.y, 0}, placement);
        }
    }
    const auto count = static_cast<std::uint32_t>(part.vertices.size()) - first;
    for (const Loop& loop : loops) {
        for (const dg::DPoint2D& point : loop) {
            AddVertex(part, {point.x, point.y, depth}, placement);
        }
    }
    for (const Triangle& t : caps) {
        part.triangles.push_back({first + t[0], first + t[2], first + t[1]});
        part.triangles.push_back({first + count + t[0], first + count + t[1], first + count + t[2]});
    }
    std::uint32_t start = first;
    for (const Loop& loop : loops) {
        const auto size = static_cast<std::uint32_t>(loop.size());
        for (std::uint32_t i = 0; i < size; ++i) {
            const std::uint32_t from = start + i;
            const std::uint32_t to = start + (i + 1) % size;
            AddQuad(part, from, to, to + count, from + count);
        }
        start += size;
    }
}

void AddRevolution(Part& part, const Loop& profile, const dg::Location& placement, int segments) {
    const auto turns = static_cast<std::size_t>(segments);
    std::vector<std::vector<std::uint32_t>> circles;  // of each profile point
    for (const dg::DPoint2D& point : profile) {
        std::vector<std::uint32_t> circle;
        for (std::size_t i = 0; i < turns; ++i) {
            if (point.y == 0 && i > 0) {
                circle.push_back(circle.front());
                continue;
            }
            const double angle = 2 * std::numbers::pi * static_cast<double>(i) / segments;
            circle.push_back(AddVertex(part, {point.y * dg::Cos(angle), point.y * dg::Sin(angle), point.x}, placement));
        }
        circles.push_back(std::move(circle));
    }
    for (std::size_t p = 0; p < profile.size(); ++p) {
        const std::vector<std::uint32_t>& here = circles[p];
        const std::vector<std::uint32_t>& next = circles[(p + 1) % profile.size()];
        for (std::size_t i = 0; i < turns; ++i) {
            const std::size_t j = (i + 1) % turns;
            AddQuad(part, here[i], next[i], next[j], here[j]);
        }
    }
}

}  // namespace scene
