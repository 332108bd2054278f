// Cuts at one side after the other. Results are checked too, because the difference of two finite numbers need not be
// finite.
#include "replay/picture/Clip.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace replay {

namespace {

// The half plane a x + b y + c >= 0.
struct HalfPlane {
    double a;
    double b;
    double c;

    [[nodiscard]] double Distance(const dg::DPoint2D& p) const { return a * p.x + b * p.y + c; }
};

std::array<HalfPlane, 4> SidesOf(const ClipRect& rect) {
    return {{{1, 0, -rect.left}, {-1, 0, rect.right}, {0, 1, -rect.bottom}, {0, -1, rect.top}}};
}

dg::DPoint2D Between(const dg::DPoint2D& a, const dg::DPoint2D& b, double share) {
    return {a.x + (b.x - a.x) * share, a.y + (b.y - a.y) * share};
}

bool IsFinite(const dg::DPoint2D& p) {
    return std::isfinite(p.x) && std::isfinite(p.y);
}

}  // namespace

std::optional<std::pair<dg::DPoint2D, dg::DPoint2D>> ClipLine(const dg::DPoint2D& from, const dg::DPoint2D& to,
                                                              const ClipRect& rect) {
    if (!IsFinite(from) || !IsFinite(to)) {
        return std::nullopt;
    }
    double start = 0;
    double end = 1;
    for (const HalfPlane& side : SidesOf(rect)) {
        const double a = side.Distance(from);
        const double b = side.Distance(to);
        if (a < 0 && b < 0) {
            return std::nullopt;
        }
        if (a < 0) {
            start = std::max(start, a / (a - b));
        } else if (b < 0) {
            end = std::min(end, a / (a - b));
        }
    }
    if (start > end) {
        return std::nullopt;
    }
    const std::pair clipped(Between(from, to, start), Between(from, to, end));
    // Between two finite points at opposite ends of the number range lies a difference that is not.
    return IsFinite(clipped.first) && IsFinite(clipped.second) ? std::optional(clipped) : std::nullopt;
}

std::vector<dg::DPoint2D> ClipArea(std::vector<dg::DPoint2D> outline, const ClipRect& rect) {
    for (const HalfPlane& side : SidesOf(rect)) {
        std::vector<dg::DPoint2D> kept;
        for (std::size_t i = 0; i < outline.size(); ++i) {
            const dg::DPoint2D& here = outline[i];
            const dg::DPoint2D& next = outline[(i + 1) % outline.size()];
            const double a = side.Distance(here);
            const double b = side.Distance(next);
            if (a >= 0) {
                kept.push_back(here);
            }
            if ((a < 0) != (b < 0)) {
                kept.push_back(Between(here, next, a / (a - b)));
            }
        }
        outline = std::move(kept);
    }
    if (outline.size() < 3 || !std::all_of(outline.begin(), outline.end(), IsFinite)) {
        return {};
    }
    return outline;
}

}  // namespace replay
