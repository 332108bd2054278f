// Cuts ears off. Holes are first joined to the outline, nearest first; then the ear with the shortest cut goes each
// time. The time grows at least with the third power of the number of points: for outlines of a few hundred.
#include "scene/Polygon.h"

#include "host/dg/Functions.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <numbers>
#include <numeric>
#include <optional>
#include <stdexcept>

namespace scene {
namespace {

using Ring = std::vector<std::uint32_t>;

// Positive when c lies to the left of the line from a to b.
double Side(const dg::DPoint2D& a, const dg::DPoint2D& b, const dg::DPoint2D& c) {
    return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

double DistanceSquared(const dg::DPoint2D& a, const dg::DPoint2D& b) {
    return (a.x - b.x) * (a.x - b.x) + (a.y - b.y) * (a.y - b.y);
}

bool Cross(const dg::DPoint2D& a, const dg::DPoint2D& b, const dg::DPoint2D& c, const dg::DPoint2D& d) {
    return Side(a, b, c) * Side(a, b, d) < 0 && Side(c, d, a) * Side(c, d, b) < 0;
}

class Triangulation {
public:
    Triangulation(const Loop& outline, const std::vector<Loop>& holes) : m_points(outline) {
        m_ring.resize(outline.size());
        std::iota(m_ring.begin(), m_ring.end(), 0U);
        for (const Loop& hole : holes) {
            Ring ring(hole.size());
            std::iota(ring.begin(), ring.end(), static_cast<std::uint32_t>(m_points.size()));
            m_points.insert(m_points.end(), hole.begin(), hole.end());
            m_holes.push_back(std::move(ring));
        }
    }

    std::vector<Triangle> Run() {
        while (!m_holes.empty()) {
            JoinNearestHole();
        }
        std::vector<Triangle> triangles;
        while (m_ring.size() > 3) {
            const std::size_t ear = FindEar();
            triangles.push_back(TriangleAt(ear));
            m_ring.erase(m_ring.begin() + static_cast<std::ptrdiff_t>(ear));
        }
        triangles.push_back(TriangleAt(1));
        return triangles;
    }

private:
    Triangle TriangleAt(std::size_t i) const {
        const std::size_t n = m_ring.size();
        return {m_ring[(i + n - 1) % n], m_ring[i], m_ring[(i + 1) % n]};
    }

    bool CrossesRing(const Ring& ring, const dg::DPoint2D& a, const dg::DPoint2D& b) const {
        for (std::size_t i = 0; i < ring.size(); ++i) {
            if (Cross(a, b, m_points[ring[i]], m_points[ring[(i + 1) % ring.size()]])) {
                return true;
            }
        }
        return false;
    }

    bool IsFree(const dg::DPoint2D& a, const dg::DPoint2D& b) const {
        return !CrossesRing(m_ring, a, b) &&
               std::none_of(m_holes.begin(), m_holes.end(), [&](const Ring& hole) { return CrossesRing(hole, a, b); });
    }

    // Opens a hole towards the ring by a bridge that is walked in both directions. The shortest free bridge over all
    // holes crosses nothing and passes through no other point.
    void JoinNearestHole() {
        double best = std::numeric_limits<double>::max();
        std::size_t bestHole = 0;
        std::size_t bestRing = 0;
        std::size_t bestStart = 0;
        for (std::size_t h = 0; h < m_holes.size(); ++h) {
            for (std::size_t s = 0; s < m_holes[h].size(); ++s) {
                for (std::size_t r = 0; r < m_ring.size(); ++r) {
                    const dg::DPoint2D& a = m_points[m_holes[h][s]];
                    const dg::DPoint2D& b = m_points[m_ring[r]];
                    const double distance = DistanceSquared(a, b);
                    if (distance < best && IsFree(a, b)) {
                        best = distance;
                        bestHole = h;
                        bestRing = r;
                        bestStart = s;
                    }
                }
            }
        }
        if (best == std::numeric_limits<double>::max()) {
            throw std::invalid_argument("a hole cannot be joined to its outline");
        }
        Ring bridge = m_holes[bestHole];
        std::rotate(bridge.begin(), bridge.begin() + static_cast<std::ptrdiff_t>(bestStart), bridge.end());
        bridge.push_back(bridge.front());
        bridge.push_back(m_ring[bestRing]);
        m_ring.insert(m_ring.begin() + static_cast<std::ptrdiff_t>(bestRing) + 1, bridge.begin(), bridge.end());
        m_holes.erase(m_holes.begin() + static_cast<std::ptrdiff_t>(bestHole));
    }

    bool IsEar(const Triangle& t) const {
        const dg::DPoint2D& a = m_points[t[0]];
        const dg::DPoint2D& b = m_points[t[1]];
        const dg::DPoint2D& c = m_points[t[2]];
        if (Side(a, b, c) <= 1e-12) {
            return false;
        }
        return std::none_of(m_ring.begin(), m_ring.end(), [&](std::uint32_t index) {
            const dg::DPoint2D& p = m_points[index];
            return index != t[0] && index != t[1] && index != t[2] && Side(a, b, p) >= 0 && Side(b, c, p) >= 0 &&
                   Side(c, a, p) >= 0;
        });
    }

    // The ear with the shortest cut: it leaves fewer slivers than the first one would.
    std::size_t FindEar() const {
        double best = std::numeric_limits<double>::max();
        std::optional<std::size_t> found;
        for (std::size_t i = 0; i < m_ring.size(); ++i) {
            const Triangle triangle = TriangleAt(i);
            const double cut = DistanceSquared(m_points[triangle[0]], m_points[triangle[2]]);
            if (cut < best && IsEar(triangle)) {
                best = cut;
                found = i;
            }
        }
        if (!found) {
            throw std::invalid_argument("an outline cannot be cut into triangles");
        }
        return *found;
    }

    std::vector<dg::DPoint2D> m_points;
    Ring m_ring;
    std::vector<Ring> m_holes;
};

}  // namespace

Loop MakeRectangle(double left, double bottom, double right, double top) {
    return {{left, bottom}, {right, bottom}, {right, top}, {left, top}};
}

Loop MakeCircle(const dg::DPoint2D& center, double radius, int segments) {
    Loop circle;
    for (int i = 0; i < segments; ++i) {
        const double angle = 2 * std::numbers::pi * i / segments;
        circle.emplace_back(center.x + radius * dg::Cos(angle), center.y + radius * dg::Sin(angle));
    }
    return circle;
}

double GetSignedArea(const Loop& loop) {
    double area = 0;
    for (std::size_t i = 0; i < loop.size(); ++i) {
        const dg::DPoint2D& a = loop[i];
        const dg::DPoint2D& b = loop[(i + 1) % loop.size()];
        area += (a.x * b.y - b.x * a.y) / 2;
    }
    return area;
}

std::vector<Triangle> TriangulatePolygon(const Loop& outline, const std::vector<Loop>& holes) {
    if (outline.size() < 3) {
        throw std::invalid_argument("an outline needs three points");
    }
    return Triangulation(outline, holes).Run();
}

}  // namespace scene
