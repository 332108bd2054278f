// Cuts each line into short pieces and asks for the middle of each whether a triangle covers it. A triangle has to be
// nearer by a small tolerance, so that an edge is not hidden by the surfaces that it bounds.
#include "scene/ProjectedEdges.h"

#include "scene/MeshEdges.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace scene {
namespace {

// Lines are cut into pieces of at most this length; each is shown or hidden as a whole.
constexpr double PieceLength = 0.06;
constexpr int MaxPieces = 256;

// A triangle in the frame: x and y on the plane, z towards the eye.
struct Face {
    dg::DPoint3D a;
    dg::DPoint3D b;
    dg::DPoint3D c;
    double area;  // twice the signed area on the plane
};

dg::DPoint3D ToFrame(const dg::DPoint3D& point, const dg::Location& frame) {
    const dg::DVec3 local = dg::DMat33(frame.GetMat()) * (point - frame.GetPos());
    return dg::DPoint3D(local);
}

double Cross2D(const dg::DPoint3D& a, const dg::DPoint3D& b, const dg::DPoint3D& c) {
    return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

bool Covers(const Face& face, const dg::DPoint3D& p) {
    const double u = Cross2D(face.b, face.c, p) / face.area;
    const double v = Cross2D(face.c, face.a, p) / face.area;
    const double w = 1 - u - v;
    constexpr double inside = 1e-9;
    constexpr double nearer = 1e-3;
    return u > inside && v > inside && w > inside && u * face.a.z + v * face.b.z + w * face.c.z > p.z + nearer;
}

class VisibleLines {
public:
    VisibleLines(const Model& model, const dg::Location& frame) : m_frame(frame) {
        for (const Part& part : model.parts) {
            for (const Triangle& t : part.triangles) {
                AddFace(ToFrame(part.vertices[t[0]], frame), ToFrame(part.vertices[t[1]], frame),
                        ToFrame(part.vertices[t[2]], frame));
            }
        }
    }

    void AddLine(const dg::DPoint3D& worldFrom, const dg::DPoint3D& worldTo) {
        const dg::DPoint3D from = ToFrame(worldFrom, m_frame);
        const dg::DVec3 whole = ToFrame(worldTo, m_frame) - from;
        const double length = std::hypot(whole.x, whole.y);
        const int pieces = std::clamp(static_cast<int>(std::ceil(length / PieceLength)), 1, MaxPieces);
        int start = 0;
        bool startHidden = IsHidden(from + whole * (0.5 / pieces));
        for (int i = 1; i <= pieces; ++i) {
            const bool hidden = i < pieces && IsHidden(from + whole * ((i + 0.5) / pieces));
            if (i == pieces || hidden != startHidden) {
                const dg::DPoint3D a = from + whole * (static_cast<double>(start) / pieces);
                const dg::DPoint3D b = from + whole * (static_cast<double>(i) / pieces);
                m_lines.push_back({{a.x, a.y}, {b.x, b.y}, startHidden});
                start = i;
                startHidden = hidden;
            }
        }
    }

    [[nodiscard]] std::vector<ProjectedLine> TakeLines() { return std::move(m_lines); }

private:
    // Faces seen edge-on hide nothing.
    void AddFace(const dg::DPoint3D& a, const dg::DPoint3D& b, const dg::DPoint3D& c) {
        const double area = Cross2D(a, b, c);
        if (std::abs(area) > 1e-9) {
            m_faces.push_back({a, b, c, area});
        }
    }

    [[nodiscard]] bool IsHidden(const dg::DPoint3D& point) const {
        return std::any_of(m_faces.begin(), m_faces.end(), [&](const Face& face) { return Covers(face, point); });
    }

    dg::Location m_frame;
    std::vector<Face> m_faces;
    std::vector<ProjectedLine> m_lines;
};

}  // namespace

std::vector<ProjectedLine> ProjectEdges(const Model& model, const dg::Location& frame) {
    VisibleLines visible(model, frame);
    const dg::DVec3 towardsEye(frame.GetW());
    for (const Part& part : model.parts) {
        const auto facesEye = [&](std::size_t triangle) {
            return dg::DotProduct(GetAreaNormal(part.vertices, part.triangles[triangle]), towardsEye) > 1e-9;
        };
        for (const MeshEdge& edge : FindMeshEdges(part)) {
            const bool outline = edge.second && facesEye(edge.first) != facesEye(*edge.second);
            if (edge.sharp || outline) {
                visible.AddLine(part.vertices[edge.vertices[0]], part.vertices[edge.vertices[1]]);
            }
        }
    }
    return visible.TakeLines();
}

}  // namespace scene
