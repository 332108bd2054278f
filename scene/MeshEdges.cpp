// Sorts the sides of all triangles, which brings the two sides of an edge together. Corners that meet over edges that
// are not sharp share one normal, weighted by the areas of their triangles.
#include "scene/MeshEdges.h"

#include <algorithm>
#include <numbers>
#include <numeric>
#include <tuple>

namespace scene {
namespace {

struct HalfEdge {
    std::uint32_t low;
    std::uint32_t high;
    std::size_t triangle;
    bool forward;  // whether the triangle runs from low to high
};

std::vector<HalfEdge> CollectHalfEdges(const Part& part) {
    std::vector<HalfEdge> halves;
    halves.reserve(part.triangles.size() * 3);
    for (std::size_t t = 0; t < part.triangles.size(); ++t) {
        const Triangle& triangle = part.triangles[t];
        for (std::size_t corner = 0; corner < 3; ++corner) {
            const std::uint32_t from = triangle[corner];
            const std::uint32_t to = triangle[(corner + 1) % 3];
            halves.push_back({std::min(from, to), std::max(from, to), t, from < to});
        }
    }
    std::sort(halves.begin(), halves.end(), [](const HalfEdge& a, const HalfEdge& b) {
        return std::tie(a.low, a.high, a.triangle) < std::tie(b.low, b.high, b.triangle);
    });
    return halves;
}

// Corners that share a smooth normal, as disjoint sets.
class CornerSets {
public:
    explicit CornerSets(std::size_t count) : m_parents(count) { std::iota(m_parents.begin(), m_parents.end(), 0U); }

    std::size_t Find(std::size_t corner) {
        while (m_parents[corner] != corner) {
            m_parents[corner] = m_parents[m_parents[corner]];
            corner = m_parents[corner];
        }
        return corner;
    }
    void Join(std::size_t a, std::size_t b) { m_parents[Find(a)] = Find(b); }

private:
    std::vector<std::size_t> m_parents;
};

// The corner of a triangle at a vertex, counted over all triangles.
std::size_t CornerAt(const Part& part, std::size_t triangle, std::uint32_t vertex) {
    const Triangle& corners = part.triangles[triangle];
    const auto found = std::find(corners.begin(), corners.end(), vertex);
    return triangle * 3 + static_cast<std::size_t>(found - corners.begin());
}

}  // namespace

dg::DVec3 GetAreaNormal(const std::vector<dg::DPoint3D>& vertices, const Triangle& triangle) {
    const dg::DPoint3D& a = vertices[triangle[0]];
    return dg::CrossProduct(vertices[triangle[1]] - a, vertices[triangle[2]] - a);
}

std::vector<MeshEdge> FindMeshEdges(const Part& part) {
    const std::vector<HalfEdge> halves = CollectHalfEdges(part);
    const double crease = CreaseDegrees * std::numbers::pi / 180;
    std::vector<MeshEdge> edges;
    for (std::size_t begin = 0; begin < halves.size();) {
        std::size_t end = begin + 1;
        while (end < halves.size() && halves[end].low == halves[begin].low && halves[end].high == halves[begin].high) {
            ++end;
        }
        MeshEdge edge{{halves[begin].low, halves[begin].high}, halves[begin].triangle, std::nullopt, true};
        // Two triangles that run along the edge the same way have opposite outsides and form no common surface.
        if (end - begin == 2 && halves[begin].forward != halves[begin + 1].forward) {
            edge.second = halves[begin + 1].triangle;
            edge.sharp = dg::Angle(GetAreaNormal(part.vertices, part.triangles[edge.first]),
                                   GetAreaNormal(part.vertices, part.triangles[*edge.second])) > crease;
        }
        edges.push_back(edge);
        begin = end;
    }
    return edges;
}

std::vector<Edge> FindSharpEdges(const Part& part) {
    std::vector<Edge> sharp;
    for (const MeshEdge& edge : FindMeshEdges(part)) {
        if (edge.sharp) {
            sharp.push_back(edge.vertices);
        }
    }
    return sharp;
}

std::vector<std::array<dg::DVec3, 3>> ComputeCornerNormals(const Part& part, const std::vector<MeshEdge>& edges) {
    CornerSets sets(part.triangles.size() * 3);
    for (const MeshEdge& edge : edges) {
        if (edge.sharp || !edge.second) {
            continue;
        }
        for (const std::uint32_t vertex : edge.vertices) {
            sets.Join(CornerAt(part, edge.first, vertex), CornerAt(part, *edge.second, vertex));
        }
    }
    std::vector<dg::DVec3> sums(part.triangles.size() * 3);
    for (std::size_t t = 0; t < part.triangles.size(); ++t) {
        const dg::DVec3 normal = GetAreaNormal(part.vertices, part.triangles[t]);
        for (std::size_t corner = 0; corner < 3; ++corner) {
            sums[sets.Find(t * 3 + corner)] += normal;
        }
    }
    for (dg::DVec3& sum : sums) {
        sum.Normalize();
    }
    std::vector<std::array<dg::DVec3, 3>> normals(part.triangles.size());
    for (std::size_t t = 0; t < normals.size(); ++t) {
        for (std::size_t corner = 0; corner < 3; ++corner) {
            normals[t][corner] = sums[sets.Find(t * 3 + corner)];
        }
    }
    return normals;
}

}  // namespace scene
