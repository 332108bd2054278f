// The camera of a 3D view.
#pragma once

#include "host/HostApi.h"
#include "host/dg/Location.h"
#include "host/dg/Matrix.h"

#include <cstdint>

namespace dg {

// A placement, a projection window on the view plane and a viewport in pixels. The camera looks along -W of its
// location, with U to the right and V up. The default looks along -Z from the origin through a window of [-1, 1] one
// unit away, orthographically, onto a viewport of 0 x 0 pixels.
class Camera3D {
public:
    constexpr Camera3D() noexcept = default;

    [[nodiscard]] constexpr std::uint32_t GetViewportWidth() const noexcept { return m_viewportWidth; }
    [[nodiscard]] constexpr std::uint32_t GetViewportHeight() const noexcept { return m_viewportHeight; }
    [[nodiscard]] constexpr const Location& GetLocation() const noexcept { return m_location; }
    // Maps world coordinates to eye coordinates (row vectors): the inverse of the placement, which is expected to be
    // orthonormal. Computed on demand, so that moving a camera costs nothing.
    [[nodiscard]] HOST_API DMat44 GetWorldToEye() const noexcept;

    // Writes the edges of the projection window, in model units on the view plane, the plane's third coordinate in the
    // camera's own frame and the projection kind (true: orthographic). The third coordinate is below zero, because the
    // camera looks along -W: for a point (u, v) of the window, (u, v, viewPlane) is the eye ray through it.
    constexpr void GetProjection(double& left, double& right, double& bottom, double& top, double& viewPlane,
                                 bool& orthographic) const noexcept {
        left = m_left;
        right = m_right;
        bottom = m_bottom;
        top = m_top;
        viewPlane = m_viewPlane;
        orthographic = m_orthographic;
    }

    constexpr void SetViewport(std::uint32_t width, std::uint32_t height) noexcept {
        m_viewportWidth = width;
        m_viewportHeight = height;
    }
    constexpr void SetLocation(const Location& location) noexcept { m_location = location; }
    constexpr void SetProjection(double left, double right, double bottom, double top, double viewPlane,
                                 bool orthographic) noexcept {
        m_left = left;
        m_right = right;
        m_bottom = bottom;
        m_top = top;
        m_viewPlane = viewPlane;
        m_orthographic = orthographic;
    }

    friend constexpr bool operator==(const Camera3D&, const Camera3D&) = default;

private:
    std::uint32_t m_viewportWidth = 0;
    std::uint32_t m_viewportHeight = 0;
    double m_left = -1;
    double m_right = 1;
    double m_bottom = -1;
    double m_top = 1;
    double m_viewPlane = -1;
    bool m_orthographic = true;
    Location m_location;
};

}  // namespace dg
