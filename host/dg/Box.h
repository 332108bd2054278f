// Axis-aligned boxes. An empty box has its minimum above its maximum on every axis.
#pragma once

#include "host/dg/Point.h"
#include "host/dg/Vec.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace dg {

class DMat44;

// A box in space. The default is the empty box.
struct DBox {
    DPoint3D min{std::numeric_limits<double>::max(), std::numeric_limits<double>::max(),
                 std::numeric_limits<double>::max()};
    DPoint3D max{std::numeric_limits<double>::lowest(), std::numeric_limits<double>::lowest(),
                 std::numeric_limits<double>::lowest()};

    static const DBox EMPTY;

    constexpr DBox() noexcept = default;
    constexpr DBox(const DPoint3D& low, const DPoint3D& high) noexcept : min(low), max(high) {}

    [[nodiscard]] constexpr bool IsEmpty() const noexcept { return min.x > max.x; }

    constexpr void Enclose(const DPoint3D& p) noexcept {
        min = {std::min(min.x, p.x), std::min(min.y, p.y), std::min(min.z, p.z)};
        max = {std::max(max.x, p.x), std::max(max.y, p.y), std::max(max.z, p.z)};
    }

    // The edge lengths. An empty box gives meaningless lengths: ask IsEmpty first.
    [[nodiscard]] constexpr DVec3 GetSize() const noexcept { return max - min; }

    // The axis-aligned box of the eight mapped corners; an empty box stays empty. Defined in Matrix.h.
    constexpr DBox& operator*=(const DMat44& matrix) noexcept;

    friend constexpr bool operator==(const DBox&, const DBox&) = default;
};
inline constexpr DBox DBox::EMPTY{};

// A box in the plane. The default is the empty box.
struct DBox2D {
    DPoint2D min{std::numeric_limits<double>::max(), std::numeric_limits<double>::max()};
    DPoint2D max{std::numeric_limits<double>::lowest(), std::numeric_limits<double>::lowest()};

    static const DBox2D EMPTY;

    [[nodiscard]] constexpr bool IsEmpty() const noexcept { return min.x > max.x; }

    constexpr void Enclose(const DPoint2D& p) noexcept {
        min = {std::min(min.x, p.x), std::min(min.y, p.y)};
        max = {std::max(max.x, p.x), std::max(max.y, p.y)};
    }

    // The middle of the box; for an empty box the origin.
    [[nodiscard]] constexpr DPoint2D GetCenter() const noexcept {
        return {(min.x + max.x) * 0.5, (min.y + max.y) * 0.5};
    }

    // The length of the diagonal; an empty box has diagonal 0.
    [[nodiscard]] double GetDiagonal() const noexcept {
        if (IsEmpty()) {
            return 0.0;
        }
        const double dx = max.x - min.x;
        const double dy = max.y - min.y;
        return std::sqrt(dx * dx + dy * dy);
    }

    friend constexpr bool operator==(const DBox2D&, const DBox2D&) = default;
};
inline constexpr DBox2D DBox2D::EMPTY{};

}  // namespace dg
