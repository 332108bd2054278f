// Tests every triangle, from both sides. In a perspective view only what is in front of the eye can be picked; in an
// orthographic one the camera's plane hides nothing.
#include "viewer/Picking.h"

#include "host/dg/Location.h"
#include "host/dg/Matrix.h"

#include <algorithm>

namespace viewer {
namespace {

struct Projection {
    explicit Projection(const dg::Camera3D& camera) {
        camera.GetProjection(left, right, bottom, top, viewPlane, orthographic);
    }

    double left = 0;
    double right = 0;
    double bottom = 0;
    double top = 0;
    double viewPlane = 0;  // third coordinate in the camera's frame, below zero
    bool orthographic = false;
};

bool HasPixels(const dg::Camera3D& camera) {
    return camera.GetViewportWidth() > 0 && camera.GetViewportHeight() > 0;
}

// Where the line of a ray crosses a triangle, as a multiple of the ray's direction; no value where it misses.
std::optional<double> CrossTriangle(const Ray& ray, const dg::DPoint3D& a, const dg::DPoint3D& b,
                                    const dg::DPoint3D& c) {
    const dg::DVec3 ab = b - a;
    const dg::DVec3 ac = c - a;
    const dg::DVec3 normalToAc = dg::CrossProduct(ray.direction, ac);
    const double determinant = dg::DotProduct(ab, normalToAc);
    if (determinant == 0.0) {
        return std::nullopt;  // seen edge-on, or without area
    }
    const dg::DVec3 fromA = ray.origin - a;
    const double u = dg::DotProduct(fromA, normalToAc) / determinant;
    const dg::DVec3 normalToAb = dg::CrossProduct(fromA, ab);
    const double v = dg::DotProduct(ray.direction, normalToAb) / determinant;
    if (!(u >= 0 && v >= 0 && u + v <= 1)) {
        return std::nullopt;
    }
    return dg::DotProduct(ac, normalToAb) / determinant;
}

// The smallest crossing of a part; for a half line only those at or behind its origin count.
std::optional<double> CrossPart(const Ray& ray, bool halfLine, const scene::Part& part) {
    std::optional<double> nearest;
    for (const scene::Triangle& triangle : part.triangles) {
        const std::optional<double> at =
            CrossTriangle(ray, part.vertices[triangle[0]], part.vertices[triangle[1]], part.vertices[triangle[2]]);
        if (at && (!halfLine || *at >= 0) && (!nearest || *at < *nearest)) {
            nearest = at;
        }
    }
    return nearest;
}

}  // namespace

std::optional<Ray> MakeRay(const dg::Camera3D& camera, double x, double y) {
    if (!HasPixels(camera)) {
        return std::nullopt;
    }
    const Projection p(camera);
    const double planeX = x / camera.GetViewportWidth() * (p.right - p.left) + p.left;
    const double planeY = y / camera.GetViewportHeight() * (p.top - p.bottom) + p.bottom;
    Ray ray{{0, 0, 0}, {planeX, planeY, p.viewPlane}};
    if (p.orthographic) {
        ray = {{planeX, planeY, 0}, {0, 0, -1}};
    }
    ray.origin *= camera.GetLocation();
    ray.direction *= camera.GetLocation();
    return ray;
}

std::optional<dg::DPoint2D> ProjectPoint(const dg::Camera3D& camera, const dg::DPoint3D& point) {
    const Projection p(camera);
    const double width = p.right - p.left;
    const double height = p.top - p.bottom;
    if (!HasPixels(camera) || width == 0.0 || height == 0.0) {
        return std::nullopt;
    }
    dg::DPoint3D eye = camera.GetWorldToEye().MapPoint(point);
    if (!p.orthographic) {
        if (!(eye.z < 0)) {
            return std::nullopt;
        }
        eye.x *= p.viewPlane / eye.z;
        eye.y *= p.viewPlane / eye.z;
    }
    return dg::DPoint2D((eye.x - p.left) / width * camera.GetViewportWidth(),
                        (eye.y - p.bottom) / height * camera.GetViewportHeight());
}

std::optional<std::size_t> PickPart(const dg::Camera3D& camera, const scene::Model& model, double x, double y) {
    const std::optional<Ray> ray = MakeRay(camera, x, y);
    if (!ray) {
        return std::nullopt;
    }
    const bool halfLine = !Projection(camera).orthographic;
    std::optional<std::size_t> picked;
    double nearest = 0;
    for (std::size_t i = 0; i < model.parts.size(); ++i) {
        const std::optional<double> at = CrossPart(*ray, halfLine, model.parts[i]);
        if (at && (!picked || *at < nearest)) {
            picked = i;
            nearest = *at;
        }
    }
    return picked;
}

std::vector<std::size_t> FindPartsInside(const dg::Camera3D& camera, const scene::Model& model,
                                         const RubberBand& band) {
    const auto [lowX, highX] = std::minmax(band.x0, band.x1);
    const auto [lowY, highY] = std::minmax(band.y0, band.y1);
    const auto isInside = [&, lowX = lowX, highX = highX, lowY = lowY, highY = highY](const dg::DPoint3D& vertex) {
        const std::optional<dg::DPoint2D> pixel = ProjectPoint(camera, vertex);
        return pixel && pixel->x >= lowX && pixel->x <= highX && pixel->y >= lowY && pixel->y <= highY;
    };
    std::vector<std::size_t> inside;
    for (std::size_t i = 0; i < model.parts.size(); ++i) {
        const std::vector<dg::DPoint3D>& vertices = model.parts[i].vertices;
        if (!vertices.empty() && std::all_of(vertices.begin(), vertices.end(), isInside)) {
            inside.push_back(i);
        }
    }
    return inside;
}

}  // namespace viewer
