// Refuses a camera that sees nothing before anything is drawn, so that what follows computes with finite numbers. A
// perspective camera sees nothing close to the eye: depth is divided by.
#include "replay/picture/SceneProjection.h"

#include <cmath>

namespace replay {

namespace {

// Nearer than this share of the view plane's distance a perspective camera sees nothing.
constexpr double NearShare = 1e-3;

bool IsFinite(const dg::DMat44& matrix) {
    for (const auto& row : matrix.m) {
        for (const double value : row) {
            if (!std::isfinite(value)) {
                return false;
            }
        }
    }
    return true;
}

}  // namespace

std::optional<SceneProjection> SceneProjection::Make(const dg::Camera3D& camera, int width, int height) {
    double right = 0;
    double bottom = 0;
    SceneProjection p;
    camera.GetProjection(p.m_left, right, bottom, p.m_top, p.m_viewPlane, p.m_orthographic);
    p.m_worldToEye = camera.GetWorldToEye();
    p.m_pixelsPerUnitX = width / (right - p.m_left);
    p.m_pixelsPerUnitY = height / (p.m_top - bottom);
    p.m_nearZ = p.m_viewPlane * NearShare;
    const bool hasWindow = std::isfinite(p.m_left) && std::isfinite(right) && right > p.m_left &&
                           std::isfinite(bottom) && std::isfinite(p.m_top) && p.m_top > bottom;
    const bool hasViewPlane = p.m_orthographic || (std::isfinite(p.m_viewPlane) && p.m_nearZ < 0);
    const bool hasScale = std::isnormal(p.m_pixelsPerUnitX) && std::isnormal(p.m_pixelsPerUnitY);
    if (width <= 0 || height <= 0 || !hasWindow || !hasViewPlane || !hasScale || !IsFinite(p.m_worldToEye)) {
        return std::nullopt;
    }
    return p;
}

PicturePoint SceneProjection::ToPicture(const dg::DPoint3D& eye) const {
    const double scale = m_orthographic ? 1.0 : m_viewPlane / eye.z;
    return {(eye.x * scale - m_left) * m_pixelsPerUnitX, (m_top - eye.y * scale) * m_pixelsPerUnitY,
            m_orthographic ? eye.z : scale};
}

dg::DVec3 SceneProjection::TowardsViewer(const dg::DPoint3D& eye) const {
    return m_orthographic ? dg::DVec3::Z : dg::DVec3{-eye.x, -eye.y, -eye.z};
}

}  // namespace replay
