// The built-in model, the solids it is made of, and the drawings of it.
#include "viewer/MachinePart.h"

#include "host/dg/Location.h"
#include "viewer/MeshEdges.h"
#include "viewer/Page.h"
#include "viewer/Polygon.h"
#include "viewer/ProjectedEdges.h"
#include "viewer/Solids.h"
#include "viewer/ViewSpec.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <map>
#include <numbers>
#include <set>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace {

using viewer::Loop;
using viewer::Part;
using viewer::Triangle;

// How often each directed edge is used. A closed surface uses each once, and once the other way.
std::map<std::pair<std::uint32_t, std::uint32_t>, int> CountDirectedEdges(const Part& part) {
    std::map<std::pair<std::uint32_t, std::uint32_t>, int> counts;
    for (const Triangle& t : part.triangles) {
        for (std::size_t i = 0; i < 3; ++i) {
            ++counts[{t[i], t[(i + 1) % 3]}];
        }
    }
    return counts;
}

void ExpectClosed(const Part& part) {
    const auto counts = CountDirectedEdges(part);
    for (const auto& [edge, count] : counts) {
        EXPECT_EQ(count, 1) << part.name << ": edge " << edge.first << " to " << edge.second;
        EXPECT_TRUE(counts.contains({edge.second, edge.first}))
            << part.name << ": edge " << edge.first << " to " << edge.second << " has nothing on its other side";
    }
}

// The volume inside each surface of a part, by a vertex of the surface; negative when it is inside out.
std::map<std::uint32_t, double> MeasureSolids(const Part& part) {
    std::vector<std::uint32_t> solid(part.vertices.size());
    for (std::uint32_t i = 0; i < solid.size(); ++i) {
        solid[i] = i;
    }
    for (bool changed = true; changed;) {
        changed = false;
        for (const Triangle& t : part.triangles) {
            const std::uint32_t lowest = std::min({solid[t[0]], solid[t[1]], solid[t[2]]});
            for (const std::uint32_t vertex : t) {
                changed = changed || solid[vertex] != lowest;
                solid[vertex] = lowest;
            }
        }
    }
    std::map<std::uint32_t, double> volumes;
    for (const Triangle& t : part.triangles) {
        const dg::DVec3 a = part.vertices[t[0]] - dg::DPoint3D::ORIGIN;
        const dg::DVec3 normal = viewer::GetAreaNormal(part.vertices, t);
        volumes[solid[t[0]]] += dg::DotProduct(a, normal) / 6;
    }
    return volumes;
}

double TotalVolume(const Part& part) {
    double total = 0;
    for (const auto& [vertex, volume] : MeasureSolids(part)) {
        total += volume;
    }
    return total;
}

// The area of a regular polygon in a circle.
double RegularArea(double radius, int segments) {
    return 0.5 * segments * radius * radius * std::sin(2 * std::numbers::pi / segments);
}

TEST(MachinePart, IsMadeOfClosedSolidsWithTheirOutsideOutside) {
    const auto model = viewer::MakeMachinePart();
    ASSERT_GE(model->parts.size(), 4U);
    std::size_t triangles = 0;
    for (const Part& part : model->parts) {
        ExpectClosed(part);
        for (const auto& [vertex, volume] : MeasureSolids(part)) {
            EXPECT_GT(volume, 0.001) << part.name << ", the solid of vertex " << vertex;
        }
        EXPECT_FALSE(part.edges.empty()) << part.name;
        triangles += part.triangles.size();
    }
    EXPECT_LE(triangles, 2500U);
}

TEST(MachinePart, IsCentredSixUnitsLongAndHasDifferentNamesAndColours) {
    const auto model = viewer::MakeMachinePart();
    const dg::DBox box = model->GetBounds();
    EXPECT_DOUBLE_EQ(box.min.x, -3);
    EXPECT_DOUBLE_EQ(box.max.x, 3);
    for (const double middle : {box.min.y + box.max.y, box.min.z + box.max.z}) {
        EXPECT_LT(std::abs(middle) / 2, 0.1);
    }
    std::set<std::string> names;
    for (std::size_t i = 0; i < model->parts.size(); ++i) {
        names.insert(model->parts[i].name);
        for (std::size_t j = 0; j < i; ++j) {
            const dg::Color& a = model->parts[i].color;
            const dg::Color& b = model->parts[j].color;
            const float apart = std::abs(a.red - b.red) + std::abs(a.green - b.green) + std::abs(a.blue - b.blue);
            EXPECT_GT(apart, 0.25F) << model->parts[i].name << " and " << model->parts[j].name;
        }
    }
    EXPECT_EQ(names.size(), model->parts.size());
}

TEST(Model, BoundsOfNothingAreEmpty) {
    EXPECT_TRUE(viewer::Model{}.GetBounds().IsEmpty());
}

TEST(Solids, AreClosedAndHaveTheVolumeOfTheirShape) {
    // A frame that is turned and shifted, so that a mixed-up axis shows.
    const dg::Location placement({0, 1, 0}, {0, 0, 1}, {1, 0, 0}, {5, -3, 2});
    struct Row {
        const char* name;
        void (*add)(Part&, const dg::Location&);
        double volume;
    };
    const Row rows[] = {
        {"box",
         [](Part& part, const dg::Location&) {
             viewer::AddBox(part, {1, 2, 3}, {2, 4, 6});
         },
         6},
        {"extrusion of an arrow",
         [](Part& part, const dg::Location& at) {
             viewer::AddExtrusion(part, {{0, -1}, {2, -1}, {2, -2}, {4, 0}, {2, 2}, {2, 1}, {0, 1}}, {}, at, 0.5);
         },
         4},
        {"clockwise outline",
         [](Part& part, const dg::Location& at) {
             viewer::AddExtrusion(part, {{0, 0}, {0, 1}, {2, 1}, {2, 0}}, {}, at, 3);
         },
         6},
        {"plate with two holes",
         [](Part& part, const dg::Location& at) {
             viewer::AddExtrusion(part, viewer::MakeRectangle(-4, -2, 4, 2),
                                  {viewer::MakeCircle({-2, 0}, 1, 12), viewer::MakeCircle({2, 0.5}, 0.5, 12)}, at, 2);
         },
         2 * (32 - RegularArea(1, 12) - RegularArea(0.5, 12))},
        {"cylinder on its axis",
         [](Part& part, const dg::Location& at) {
             viewer::AddRevolution(part, {{-1, 0}, {2, 0}, {2, 0.5}, {-1, 0.5}}, at, 24);
         },
         3 * RegularArea(0.5, 24)},
        {"ring",
         [](Part& part, const dg::Location& at) {
             viewer::AddRevolution(part, viewer::MakeRectangle(0, 1, 2, 1.5), at, 16);
         },
         2 * (RegularArea(1.5, 16) - RegularArea(1, 16))},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        Part part;
        row.add(part, placement);
        ExpectClosed(part);
        EXPECT_NEAR(TotalVolume(part), row.volume, 1e-9);
    }
}

TEST(Solids, StandWhereTheirPlacementSays) {
    Part part;
    const dg::Location placement({0, 1, 0}, {0, 0, 1}, {1, 0, 0}, {5, -3, 2});
    viewer::AddExtrusion(part, viewer::MakeRectangle(0, 0, 1, 2), {}, placement, 4);
    viewer::Model model;
    model.parts.push_back(part);
    const dg::DBox box = model.GetBounds();
    EXPECT_EQ(box.min, dg::DPoint3D(5, -3, 2));
    EXPECT_EQ(box.max, dg::DPoint3D(9, -2, 4));
}

TEST(Polygon, TrianglesCoverTheAreaOnceAndRunCounterClockwise) {
    struct Row {
        const char* name;
        Loop outline;
        std::vector<Loop> holes;  // counter-clockwise here
    };
    const Row rows[] = {
        {"two holes under a notch",
         {{0, 0}, {6, 0}, {6, 5}, {3, 1.5}, {0, 5}},
         {viewer::MakeCircle({1, 1}, 0.4, 9), viewer::MakeCircle({5, 1}, 0.6, 7)}},
        {"the point nearest to the hole lies on the far side of a slot",
         {{0, 0}, {10, 0}, {10, 10}, {4.2, 10}, {4.2, 5.5}, {4.2, 1}, {4, 1}, {4, 10}, {0, 10}},
         {viewer::MakeCircle({3.3, 5.5}, 0.3, 8)}},
    };
    for (const Row& row : rows) {
        std::vector<Loop> holes = row.holes;
        std::vector<dg::DPoint2D> points = row.outline;
        double expected = viewer::GetSignedArea(row.outline);
        for (Loop& hole : holes) {
            expected -= viewer::GetSignedArea(hole);
            std::reverse(hole.begin(), hole.end());
            points.insert(points.end(), hole.begin(), hole.end());
        }
        double area = 0;
        std::set<std::uint32_t> used;
        for (const Triangle& t : viewer::TriangulatePolygon(row.outline, holes)) {
            const double part = viewer::GetSignedArea({points.at(t[0]), points.at(t[1]), points.at(t[2])});
            EXPECT_GT(part, 0) << row.name;
            area += part;
            used.insert(t.begin(), t.end());
        }
        EXPECT_NEAR(area, expected, 1e-12) << row.name;
        EXPECT_EQ(used.size(), points.size()) << row.name;
    }
}

TEST(Polygon, RefusesWhatCannotBeCut) {
    EXPECT_THROW(static_cast<void>(viewer::TriangulatePolygon({{0, 0}, {1, 0}}, {})), std::invalid_argument);
    EXPECT_THROW(static_cast<void>(viewer::TriangulatePolygon({{0, 0}, {1, 0}, {2, 0}, {3, 0}}, {})),
                 std::invalid_argument);
    EXPECT_THROW(static_cast<void>(viewer::TriangulatePolygon({{0, 0}, {0, 1}, {1, 1}, {1, 0}}, {})),
                 std::invalid_argument)
        << "clockwise";
}

TEST(MeshEdges, FindsTheEdgesOneWouldDraw) {
    struct Row {
        const char* name;
        int segments;  // of a prism
        std::size_t sharp;
    };
    for (const Row& row : {Row{"box: all twelve, no diagonals", 4, 12}, Row{"six sides: the rims and the sides", 6, 18},
                           Row{"a round of sixteen: only the rims", 16, 32}}) {
        Part part;
        viewer::AddExtrusion(part, viewer::MakeCircle({0, 0}, 1, row.segments), {}, dg::Location(), 1);
        EXPECT_EQ(viewer::FindSharpEdges(part).size(), row.sharp) << row.name;
    }
    Part open;
    open.vertices = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {1, 1, 0}};
    open.triangles = {{0, 1, 2}, {2, 1, 3}};
    EXPECT_EQ(viewer::FindSharpEdges(open).size(), 4U) << "the border of a square, without its diagonal";
    open.triangles[1] = {1, 2, 3};
    EXPECT_EQ(viewer::FindSharpEdges(open).size(), 5U) << "opposite outsides meet at a sharp edge";
    open.triangles[1] = open.triangles[0];
    EXPECT_EQ(viewer::FindSharpEdges(open).size(), 3U) << "a triangle that stands twice is no common surface";
}

TEST(MeshEdges, NormalsAreSmoothOnRoundsAndStraightOnCaps) {
    Part part;
    viewer::AddExtrusion(part, viewer::MakeCircle({0, 0}, 2, 32), {}, dg::Location(), 1);
    const auto normals = viewer::ComputeCornerNormals(part, viewer::FindMeshEdges(part));
    for (std::size_t t = 0; t < part.triangles.size(); ++t) {
        const dg::DVec3 face = viewer::GetAreaNormal(part.vertices, part.triangles[t]);
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

// The length of the lines of one square of a pair, by whether they are hidden.
double LengthOf(const std::vector<viewer::ProjectedLine>& lines, bool hidden) {
    double length = 0;
    for (const viewer::ProjectedLine& line : lines) {
        if (line.hidden == hidden) {
            length += std::hypot(line.to.x - line.from.x, line.to.y - line.from.y);
        }
    }
    return length;
}

TEST(ProjectedEdges, WhatStandsInFrontHidesWhatStandsBehind) {
    // A wide thin box above a narrow post that sticks out of it on one side.
    viewer::Model model;
    model.parts.resize(1);
    viewer::AddBox(model.parts[0], {-2, -2, 1}, {2, 2, 1.5});
    viewer::AddBox(model.parts[0], {0, -0.5, -1}, {4, 0.5, 0});
    const dg::Location fromAbove;
    const dg::Location fromBelow({1, 0, 0}, {0, -1, 0}, {0, 0, -1}, {});
    const double pieces = 0.3;  // lines are cut in pieces, so lengths are rough
    // From above: top and bottom edges of both boxes coincide on the plane, and so do visible and covered lengths.
    // Of the post, the end at x = 0 and half of its sides are covered.
    EXPECT_NEAR(LengthOf(viewer::ProjectEdges(model, fromAbove), true), 2 * (1 + 2 * 2), pieces);
    EXPECT_NEAR(LengthOf(viewer::ProjectEdges(model, fromBelow), true), 2 * 1, pieces)
        << "from below the post covers a stretch of the box's edge at x = 2";
}

TEST(Page, EveryKindOfViewShowsSomethingInsideItsPaper) {
    for (const char* kind : viewer::ViewKinds) {
        SCOPED_TRACE(kind);
        const viewer::Page page = viewer::MakePage(kind);
        EXPECT_GT(page.areas.size() + page.lines.size(), 20U);
        const auto expectInside = [&](const dg::DPoint2D& point) {
            EXPECT_LE(std::abs(point.x), page.width / 2 + 1e-9);
            EXPECT_LE(std::abs(point.y), page.height / 2 + 1e-9);
        };
        for (const viewer::PageArea& area : page.areas) {
            std::for_each(area.outline.begin(), area.outline.end(), expectInside);
        }
        for (const viewer::PageLine& line : page.lines) {
            expectInside(line.from);
            expectInside(line.to);
        }
        for (const viewer::PageText& text : page.texts) {
            expectInside(text.at);
        }
    }
}

TEST(Page, DrawingStatesTheSizesOfThePart) {
    const dg::DVec3 size = viewer::MakeMachinePart()->GetBounds().GetSize();
    const viewer::Page page = viewer::MakePage("drawingview");
    for (const double length : {size.x, size.y, size.z}) {
        const bool found = std::any_of(page.texts.begin(), page.texts.end(), [&](const viewer::PageText& text) {
            char* end = nullptr;
            const double stated = std::strtod(text.text.c_str(), &end);
            return end != text.text.c_str() && std::abs(stated - length) < 0.006;
        });
        EXPECT_TRUE(found) << "no dimension of " << length;
    }
}

}  // namespace
