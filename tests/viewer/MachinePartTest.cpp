// The built-in model, the solids it is made of, and the drawings of it.
#include "scene/MachinePart.h"

#include "host/dg/Location.h"
#include "scene/MeshEdges.h"
#include "scene/Page.h"
#include "scene/Polygon.h"
#include "scene/ProjectedEdges.h"
#include "scene/Solids.h"
#include "viewer/ViewSpec.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <map>
#include <numbers>
#include <numeric>
#include <set>
#include <stdexcept>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace {

using scene::Loop;
using scene::Part;
using scene::Triangle;

// Every directed edge of a closed surface is used once, and once the other way.
void ExpectClosed(const Part& part) {
    std::map<std::pair<std::uint32_t, std::uint32_t>, int> counts;
    for (const Triangle& t : part.triangles) {
        for (std::size_t i = 0; i < 3; ++i) {
            ++counts[{t[i], t[(i + 1) % 3]}];
        }
    }
    for (const auto& [edge, count] : counts) {
        EXPECT_TRUE(count == 1 && counts.contains({edge.second, edge.first}))
            << part.name << ": edge " << edge.first << " to " << edge.second;
    }
}

// The volume inside each surface of a part, by the first vertex of the surface; negative when it is inside out.
std::map<std::uint32_t, double> MeasureSolids(const Part& part) {
    std::vector<std::uint32_t> solid(part.vertices.size());
    std::iota(solid.begin(), solid.end(), 0U);
    for (std::vector<std::uint32_t> before; before != solid;) {
        before = solid;
        for (const Triangle& t : part.triangles) {
            solid[t[0]] = solid[t[1]] = solid[t[2]] = std::min({solid[t[0]], solid[t[1]], solid[t[2]]});
        }
    }
    std::map<std::uint32_t, double> volumes;
    for (const Triangle& t : part.triangles) {
        const dg::DVec3 corner = part.vertices[t[0]] - dg::DPoint3D::ORIGIN;
        volumes[solid[t[0]]] += dg::DotProduct(corner, scene::GetAreaNormal(part.vertices, t)) / 6;
    }
    return volumes;
}

void ExpectOneSolid(const Part& part, double volume) {
    ExpectClosed(part);
    const auto solids = MeasureSolids(part);
    ASSERT_EQ(solids.size(), 1U) << part.name;
    EXPECT_NEAR(solids.begin()->second, volume, 1e-9) << part.name;
}

// The area of a regular polygon in a circle.
double RegularArea(double radius, int segments) {
    return 0.5 * segments * radius * radius * std::sin(2 * std::numbers::pi / segments);
}

TEST(MachinePart, IsMadeOfClosedSolidsWithTheirOutsideOutside) {
    const auto model = scene::MakeMachinePart();
    ASSERT_GE(model->parts.size(), 4U);
    std::set<std::string> names;
    for (const Part& part : model->parts) {
        ExpectClosed(part);
        for (const auto& [vertex, volume] : MeasureSolids(part)) {
            EXPECT_GT(volume, 0.001) << part.name << ", the solid of vertex " << vertex;
        }
        EXPECT_FALSE(part.edges.empty()) << part.name;
        EXPECT_TRUE(names.insert(part.name).second) << part.name;
    }
    const dg::DBox box = model->GetBounds();
    EXPECT_DOUBLE_EQ(box.min.x, -3);
    EXPECT_DOUBLE_EQ(box.max.x, 3);
}

TEST(Solids, AreClosedAndHaveTheVolumeOfTheirShape) {
    // A frame that is turned and shifted, so that a mixed-up axis shows.
    const dg::Location placement({0, 1, 0}, {0, 0, 1}, {1, 0, 0}, {5, -3, 2});
    struct Extrusion {
        const char* name;
        Loop outline;
        std::vector<Loop> holes;
        double area;
    };
    const Loop slot = {{0, 0}, {10, 0}, {10, 10}, {4.2, 10}, {4.2, 5.5}, {4.2, 1}, {4, 1}, {4, 10}, {0, 10}};
    const Extrusion extrusions[] = {
        {"arrow, clockwise", {{0, 1}, {2, 1}, {2, 2}, {4, 0}, {2, -2}, {2, -1}, {0, -1}}, {}, 8},
        {"two holes under a notch",
         {{0, 0}, {6, 0}, {6, 5}, {3, 1.5}, {0, 5}},
         {scene::MakeCircle({1, 1}, 0.4, 9), scene::MakeCircle({5, 1}, 0.6, 7)},
         19.5 - RegularArea(0.4, 9) - RegularArea(0.6, 7)},
        {"the point nearest to the hole lies on the far side of a slot",
         slot,
         {scene::MakeCircle({3.3, 5.5}, 0.3, 8)},
         100 - 0.2 * 9 - RegularArea(0.3, 8)},
    };
    for (const Extrusion& row : extrusions) {
        Part part;
        part.name = row.name;
        scene::AddExtrusion(part, row.outline, row.holes, placement, 0.5);
        ExpectOneSolid(part, row.area * 0.5);
    }
    const std::tuple<const char*, Loop, int, double> revolutions[] = {
        {"cylinder on its axis", {{-1, 0}, {2, 0}, {2, 0.5}, {-1, 0.5}}, 24, 3 * RegularArea(0.5, 24)},
        {"ring", scene::MakeRectangle(0, 1, 2, 1.5), 16, 2 * (RegularArea(1.5, 16) - RegularArea(1, 16))},
    };
    for (const auto& [name, profile, segments, volume] : revolutions) {
        Part part;
        part.name = name;
        scene::AddRevolution(part, profile, placement, segments);
        ExpectOneSolid(part, volume);
    }
    Part box;
    scene::AddBox(box, {1, 2, 3}, {2, 4, 6});
    ExpectOneSolid(box, 6);
}

TEST(Polygon, RefusesWhatCannotBeCut) {
    const Loop twoPoints = {{0, 0}, {1, 0}};
    const Loop flat = {{0, 0}, {1, 0}, {2, 0}, {3, 0}};
    const Loop clockwise = {{0, 0}, {0, 1}, {1, 1}, {1, 0}};
    for (const Loop& loop : {twoPoints, flat, clockwise}) {
        EXPECT_THROW(static_cast<void>(scene::TriangulatePolygon(loop, {})), std::invalid_argument) << loop.size();
    }
}

TEST(MeshEdges, FindsTheEdgesOneWouldDraw) {
    // Of a prism: box without diagonals; rims and sides; on a round only the rims.
    for (const auto& [segments, sharp] : {std::pair{4, 12U}, {6, 18U}, {16, 32U}}) {
        Part part;
        scene::AddExtrusion(part, scene::MakeCircle({0, 0}, 1, segments), {}, dg::Location(), 1);
        EXPECT_EQ(scene::FindSharpEdges(part).size(), sharp) << segments;
    }
    Part open;
    open.vertices = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {1, 1, 0}};
    open.triangles = {{0, 1, 2}, {2, 1, 3}};
    EXPECT_EQ(scene::FindSharpEdges(open).size(), 4U) << "the border of a square, without its diagonal";
    open.triangles[1] = {1, 2, 3};
    EXPECT_EQ(scene::FindSharpEdges(open).size(), 5U) << "opposite outsides meet at a sharp edge";
    open.triangles[1] = open.triangles[0];
    EXPECT_EQ(scene::FindSharpEdges(open).size(), 3U) << "a triangle that stands twice is no common surface";
}

TEST(MeshEdges, NormalsAreSmoothOnRoundsAndStraightOnCaps) {
    Part part;
    scene::AddExtrusion(part, scene::MakeCircle({0, 0}, 2, 32), {}, dg::Location(), 1);
    const auto normals = scene::ComputeCornerNormals(part, scene::FindMeshEdges(part));
    for (std::size_t t = 0; t < part.triangles.size(); ++t) {
        const dg::DVec3 face = scene::GetAreaNormal(part.vertices, part.triangles[t]);
        for (std::size_t corner = 0; corner < 3; ++corner) {
            const dg::DPoint3D& vertex = part.vertices[part.triangles[t][corner]];
            const bool cap = std::abs(face.z) > 1e-9;
            const dg::DVec3 expected =
                cap ? dg::DVec3(0, 0, std::copysign(1.0, face.z)) : dg::DVec3(vertex.x / 2, vertex.y / 2, 0);
            // Two triangles on one side and one on the other pull the normal of a round a little.
            EXPECT_LT(dg::Angle(normals[t][corner], expected), 0.05) << "triangle " << t << ", corner " << corner;
        }
    }
}

double HiddenLength(const scene::Model& model, const dg::Location& frame) {
    double length = 0;
    for (const scene::ProjectedLine& line : scene::ProjectEdges(model, frame)) {
        length += line.hidden ? std::hypot(line.to.x - line.from.x, line.to.y - line.from.y) : 0;
    }
    return length;
}

TEST(ProjectedEdges, WhatStandsInFrontHidesWhatStandsBehind) {
    // A wide thin box above a narrow post that sticks out of it on one side.
    scene::Model model;
    model.parts.resize(1);
    scene::AddBox(model.parts[0], {-2, -2, 1}, {2, 2, 1.5});
    scene::AddBox(model.parts[0], {0, -0.5, -1}, {4, 0.5, 0});
    const dg::Location fromAbove;
    const dg::Location fromBelow({1, 0, 0}, {0, -1, 0}, {0, 0, -1}, {});
    const double pieces = 0.3;  // lines are cut in pieces, so lengths are rough
    // From above: top and bottom edges of both boxes coincide on the plane, and so do visible and covered lengths.
    // Of the post, the end at x = 0 and half of its sides are covered.
    EXPECT_NEAR(HiddenLength(model, fromAbove), 2 * (1 + 2 * 2), pieces);
    EXPECT_NEAR(HiddenLength(model, fromBelow), 2 * 1, pieces)
        << "from below the post covers a stretch of the box's edge at x = 2";
}

TEST(Page, EveryKindOfViewShowsSomethingInsideItsPaper) {
    for (const char* kind : viewer::ViewKinds) {
        const scene::Page page = scene::MakePage(kind);
        EXPECT_GT(page.areas.size() + page.lines.size(), 20U) << kind;
        std::vector<dg::DPoint2D> points;
        for (const scene::PageArea& area : page.areas) {
            points.insert(points.end(), area.outline.begin(), area.outline.end());
        }
        for (const scene::PageLine& line : page.lines) {
            points.insert(points.end(), {line.from, line.to});
        }
        for (const dg::DPoint2D& point : points) {
            EXPECT_LE(std::max(std::abs(point.x) - page.width / 2, std::abs(point.y) - page.height / 2), 1e-9) << kind;
        }
    }
}

// A rectangle about the page's middle that takes up most of it.
bool HasFrame(const scene::Page& page) {
    const auto isSide = [&](const scene::PageLine& line, double dg::DPoint2D::*along, double length) {
        return std::abs(line.from.*along - line.to.*along) > 0.9 * length;
    };
    return std::ranges::count_if(page.lines, [&](const scene::PageLine& line) {
               return isSide(line, &dg::DPoint2D::x, page.width) || isSide(line, &dg::DPoint2D::y, page.height);
           }) >= 4;
}

TEST(Page, DrawingHasAFrameATitleAndTheSizesOfThePart) {
    const dg::DVec3 size = scene::MakeMachinePart()->GetBounds().GetSize();
    const scene::Page page = scene::MakePage("drawingview");
    EXPECT_TRUE(HasFrame(page) && HasFrame(scene::MakePage("illustration2dview")));
    EXPECT_TRUE(std::ranges::any_of(page.texts, [](const scene::PageText& t) { return t.text == "BEARING BLOCK"; }));
    for (const double length : {size.x, size.y, size.z}) {
        EXPECT_TRUE(std::ranges::any_of(
            page.texts,
            [&](const scene::PageText& text) { return std::abs(std::atof(text.text.c_str()) - length) < 0.006; }))
            << "no dimension of " << length;
    }
}

}  // namespace
