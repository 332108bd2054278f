// Which edges of a triangle mesh are sharp, and the normals that follow from it.
#pragma once

#include "host/dg/Point.h"
#include "host/dg/Vec.h"
#include "scene/Model.h"

#include <array>
#include <cstddef>
#include <optional>
#include <vector>

namespace scene {

// Two triangles that meet at a larger angle have a sharp edge between them. Above the 22.5 degrees between the faces
// of a round with 16 segments, below the 45 degrees of a chamfer.
inline constexpr double CreaseDegrees = 35;

// An edge with the triangles on its sides, as indices into the triangles.
struct MeshEdge {
    Edge vertices;
    std::size_t first = 0;
    std::optional<std::size_t> second;  // no value at a border, and where more than two triangles meet
    bool sharp = true;                  // borders are sharp
};

// The normal of a triangle, outward, with twice the triangle's area as its length.
[[nodiscard]] dg::DVec3 GetAreaNormal(const std::vector<dg::DPoint3D>& vertices, const Triangle& triangle);

// Every edge of the part's triangles once, ordered by its vertices. Triangles share an edge when they share the
// indices of both ends. The triangles' indices must be valid.
[[nodiscard]] std::vector<MeshEdge> FindMeshEdges(const Part& part);

// The edges to be drawn: borders and sharp edges.
[[nodiscard]] std::vector<Edge> FindSharpEdges(const Part& part);

// Three unit normals a triangle, one for each corner: smooth over edges that are not sharp. A triangle without area
// counts for nothing and may have zero normals. The edges are those of FindMeshEdges.
[[nodiscard]] std::vector<std::array<dg::DVec3, 3>> ComputeCornerNormals(const Part& part,
                                                                         const std::vector<MeshEdge>& edges);

}  // namespace scene
