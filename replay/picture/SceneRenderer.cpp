// Surfaces come first, then edges, those of selected parts last, then markups: what covers an edge is known only when
// all surfaces are there. A perspective view is cut at the near plane before depth is divided by.
#include "replay/picture/SceneRenderer.h"

#include "replay/picture/Raster.h"
#include "replay/picture/SceneProjection.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string>
#include <utility>

namespace replay {

namespace {

constexpr dg::Color SkyTop{0.80F, 0.86F, 0.93F, 1};
constexpr dg::Color SkyBottom{0.97F, 0.98F, 0.99F, 1};
constexpr dg::Color EdgeColor{0.09F, 0.11F, 0.15F, 1};
constexpr dg::Color SelectedColor{1.0F, 0.62F, 0.22F, 1};
constexpr dg::Color SelectedEdgeColor{0.86F, 0.32F, 0.0F, 1};

// A head light that sits a little up and to the left of the eye, so that faces turned differently look different.
constexpr dg::DVec3 LightDirection{-0.32, 0.46, 0.83};
constexpr double AmbientLight = 0.36;
constexpr double HeadLight = 0.72;

// Edge widths follow the picture's height, so that small pictures do not turn black.
constexpr double EdgeRadiusShare = 0.0016;
constexpr double SelectedRadiusShare = 0.0032;
// How far an edge may lie behind a surface and still be drawn, as a share of the model's size.
constexpr double EdgeBiasShare = 1e-3;

constexpr double ThinnestMarkup = 0.7;  // radius in samples

struct EyeCorner {
    dg::DPoint3D place;
    double light;
};

double LightOf(const dg::DVec3& normal) {
    return AmbientLight + HeadLight * std::max(0.0, dg::DotProduct(normal, LightDirection));
}

// The point between two corners that lies on the near plane.
EyeCorner OnNearPlane(const EyeCorner& a, const EyeCorner& b, double nearZ) {
    const double share = (nearZ - a.place.z) / (b.place.z - a.place.z);
    dg::DPoint3D place = a.place + (b.place - a.place) * share;
    place.z = nearZ;
    return {place, a.light + (b.light - a.light) * share};
}

class SceneDrawing {
public:
    SceneDrawing(Raster& raster, const SceneProjection& projection, double modelSize)
        : m_raster(raster), m_projection(projection), m_modelSize(modelSize) {}

    void Fill(const std::array<dg::DPoint3D, 3>& places, const std::array<dg::DVec3, 3>& normals,
              const dg::Color& color) {
        const dg::DVec3 facing = dg::CrossProduct(places[1] - places[0], places[2] - places[0]);
        // Surfaces are seen from both sides; the inside is lit as if it were the outside.
        const double side = dg::DotProduct(facing, m_projection.TowardsViewer(places[0])) < 0 ? -1.0 : 1.0;
        std::vector<EyeCorner> corners;
        for (std::size_t i = 0; i < 3; ++i) {
            corners.push_back({places[i], LightOf(m_projection.ToEye(normals[i]) * side)});
        }
        corners = CutAtNearPlane(corners);
        for (std::size_t i = 2; i < corners.size(); ++i) {
            m_raster.FillTriangle(
                {ToPicture(corners[0].place), ToPicture(corners[i - 1].place), ToPicture(corners[i].place)},
                {corners[0].light, corners[i - 1].light, corners[i].light}, color);
        }
    }

    void DrawEdge(dg::DPoint3D from, dg::DPoint3D to, double radiusShare, const dg::Color& color) {
        const bool perspective = !m_projection.IsOrthographic();
        const double nearZ = m_projection.GetNearZ();
        if (perspective && (from.z > nearZ || to.z > nearZ)) {
            if (from.z > nearZ && to.z > nearZ) {
                return;
            }
            dg::DPoint3D& cut = from.z > nearZ ? from : to;
            cut = OnNearPlane({from, 0}, {to, 0}, nearZ).place;
        }
        const PicturePoint a = ToPicture(from);
        const PicturePoint b = ToPicture(to);
        // Nearness is depth itself for parallel projection, and falls with depth for the other: there a step of the
        // model's size at the distance of the edge is the same share of nearness.
        const double depth = -std::max(from.z, to.z);
        const double bias = m_modelSize * EdgeBiasShare;
        m_raster.DrawEdge(a, b, std::max(radiusShare * m_raster.GetHeight(), 0.8),
                          perspective ? std::max(a.nearness, b.nearness) * std::min(bias / depth, 0.05) : bias, color);
    }

    void DrawMarkup(const viewer::MarkupLine& line) {
        const dg::DPoint3D origin = m_projection.ToEye(line.origin);
        if (!m_projection.IsOrthographic() && !(origin.z <= m_projection.GetNearZ())) {
            return;
        }
        const double unit = MarkupUnitShare * m_raster.GetHeight();
        const dg::DVec3 direction = m_projection.ToEye(line.direction);
        const PicturePoint start = ToPicture(origin);
        const PicturePoint end{start.x + direction.x * unit, start.y - direction.y * unit, start.nearness};
        m_raster.DrawLine(start, end, std::max(line.width * unit / 2, ThinnestMarkup), line.color);
        if (line.ballRadius > 0) {
            m_raster.DrawDisk(end, line.ballRadius * unit, line.color);
        }
    }

private:
    [[nodiscard]] PicturePoint ToPicture(const dg::DPoint3D& eye) const { return m_projection.ToPicture(eye); }

    [[nodiscard]] std::vector<EyeCorner> CutAtNearPlane(const std::vector<EyeCorner>& corners) const {
        if (m_projection.IsOrthographic()) {
            return corners;
        }
        const double nearZ = m_projection.GetNearZ();
        std::vector<EyeCorner> kept;
        for (std::size_t i = 0; i < corners.size(); ++i) {
            const EyeCorner& here = corners[i];
            const EyeCorner& next = corners[(i + 1) % corners.size()];
            if (here.place.z <= nearZ) {
                kept.push_back(here);
            }
            if ((here.place.z <= nearZ) != (next.place.z <= nearZ)) {
                kept.push_back(OnNearPlane(here, next, nearZ));
            }
        }
        return kept;
    }

    Raster& m_raster;
    const SceneProjection& m_projection;
    double m_modelSize;
};

// A part as one view sees it.
struct SeenMesh {
    const SceneRenderer::Mesh* mesh;
    std::vector<dg::DPoint3D> places;  // of the vertices, in eye coordinates
    bool selected;
};

SeenMesh See(const SceneRenderer::Mesh& mesh, const viewer::ViewSnapshot& view, const SceneProjection& projection) {
    const std::vector<std::string>& selected = view.selectedParts;
    SeenMesh seen{&mesh, {}, std::find(selected.begin(), selected.end(), mesh.part->name) != selected.end()};
    seen.places.reserve(mesh.part->vertices.size());
    for (const dg::DPoint3D& vertex : mesh.part->vertices) {
        seen.places.push_back(projection.ToEye(vertex));
    }
    return seen;
}

void DrawSurface(SceneDrawing& drawing, const SeenMesh& seen) {
    const scene::Part& part = *seen.mesh->part;
    for (std::size_t t = 0; t < part.triangles.size(); ++t) {
        const auto& [a, b, c] = part.triangles[t];
        drawing.Fill({seen.places[a], seen.places[b], seen.places[c]}, seen.mesh->normals[t],
                     seen.selected ? SelectedColor : part.color);
    }
}

// The part's own edges, and those between a triangle that faces the viewer and one that does not.
void DrawEdges(SceneDrawing& drawing, const SeenMesh& seen, const SceneProjection& projection) {
    const auto drawEdge = [&](const scene::Edge& edge) {
        drawing.DrawEdge(seen.places[edge[0]], seen.places[edge[1]],
                         seen.selected ? SelectedRadiusShare : EdgeRadiusShare,
                         seen.selected ? SelectedEdgeColor : EdgeColor);
    };
    const auto facesViewer = [&](std::size_t t) {
        const scene::Triangle& triangle = seen.mesh->part->triangles[t];
        return dg::DotProduct(scene::GetAreaNormal(seen.places, triangle),
                              projection.TowardsViewer(seen.places[triangle[0]])) > 0;
    };
    for (const scene::Edge& edge : seen.mesh->part->edges) {
        drawEdge(edge);
    }
    for (const scene::MeshEdge& edge : seen.mesh->smoothEdges) {
        if (facesViewer(edge.first) != facesViewer(*edge.second)) {
            drawEdge(edge.vertices);
        }
    }
}

// Markups far behind are drawn first; an axis that points at the viewer covers the others.
void DrawMarkups(SceneDrawing& drawing, const SceneProjection& projection, std::vector<viewer::MarkupLine> markups) {
    std::erase_if(markups, [&](const viewer::MarkupLine& line) {
        return !std::isfinite(projection.ToEye(line.direction).NormSquared());
    });
    std::stable_sort(markups.begin(), markups.end(), [&](const viewer::MarkupLine& a, const viewer::MarkupLine& b) {
        return projection.ToEye(a.direction).z < projection.ToEye(b.direction).z;
    });
    for (const viewer::MarkupLine& line : markups) {
        drawing.DrawMarkup(line);
    }
}

}  // namespace

SceneRenderer::SceneRenderer(std::shared_ptr<const scene::Model> model) : m_model(std::move(model)) {
    if (!m_model) {
        return;
    }
    const dg::DBox bounds = m_model->GetBounds();
    m_size = bounds.IsEmpty() ? 0 : bounds.GetSize().Norm();
    for (const scene::Part& part : m_model->parts) {
        std::vector<scene::MeshEdge> edges = scene::FindMeshEdges(part);
        Mesh mesh{&part, scene::ComputeCornerNormals(part, edges), {}};
        std::erase_if(edges, [](const scene::MeshEdge& edge) { return edge.sharp || !edge.second; });
        mesh.smoothEdges = std::move(edges);
        m_meshes.push_back(std::move(mesh));
    }
}

Image SceneRenderer::Render(const viewer::ViewSnapshot& view, int width, int height) const {
    if (width <= 0 || height <= 0) {
        return {};
    }
    Raster raster(width, height, SkyTop, SkyBottom);
    const std::optional<SceneProjection> projection =
        SceneProjection::Make(view.camera, raster.GetWidth(), raster.GetHeight());
    if (!projection) {
        return raster.Finish();
    }
    SceneDrawing drawing(raster, *projection, m_size);
    std::vector<SeenMesh> meshes;
    for (const Mesh& mesh : m_meshes) {
        meshes.push_back(See(mesh, view, *projection));
        DrawSurface(drawing, meshes.back());
    }
    // All surfaces are there before the first edge asks what covers it; selected edges come last and stay whole.
    std::stable_partition(meshes.begin(), meshes.end(), [](const SeenMesh& mesh) { return !mesh.selected; });
    for (const SeenMesh& mesh : meshes) {
        DrawEdges(drawing, mesh, *projection);
    }
    DrawMarkups(drawing, *projection, view.markups);
    return raster.Finish();
}

}  // namespace replay
