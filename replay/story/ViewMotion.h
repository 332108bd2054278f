// How a view moved, measured from what it shows, and the words for it.
#pragma once

#include "host/dg/Location.h"
#include "host/dg/Point.h"
#include "host/dg/Vec.h"
#include "viewer/ViewSnapshot.h"

#include <optional>
#include <string>

namespace replay {

// The way from one moment to another. Turns are those of the model as it is seen on the screen: about X (to the right)
// positive is downward, about Y (up) to the right, about Z (towards the eye) counter-clockwise. Degrees, model units,
// and pixels of the view.
struct Motion {
    double netDegrees = 0;     // of the one rotation from the first to the last moment, in [0, 180]
    double turnedDegrees = 0;  // sum over all steps, whatever their directions
    dg::DVec3 sweptDegrees;    // sum of all steps' rotation vectors, so that there and back is nothing
    dg::DVec3 eyeTravel;       // units, along the first moment's axes: right, up, backward
    double eyePath = 0;        // units, sum over all steps
    dg::DVec2 shift;           // pixels, right and up: of what the anchor was on
    double shiftPath = 0;      // pixels, sum over all steps
    double zoomPath = 0;       // sum over all steps of the visible width's logarithm
    double twistPath = 0;      // sum over all steps of the turn about Z
    // Units that are visible from left to right: of a perspective view at the depth of what the anchor was on.
    double firstWidth = 0;
    double lastWidth = 0;
    bool orthographic = true;  // also for 2D views
    double pixels = 0;         // from left to right
};

// Adds up the steps of a view. A step to another kind of view measures nothing.
class MotionMeter {
public:
    // The anchor is the view pixel that is watched, as the middle of the fingers; without one the middle of the view.
    // In a perspective view it is taken to be as far away as the spin centre.
    explicit MotionMeter(const viewer::ViewSnapshot& first, const std::optional<dg::DPoint2D>& anchor = {});

    // Begins anew from another view, with the same anchor.
    void Restart(const viewer::ViewSnapshot& first) { *this = MotionMeter(first, m_anchorPixel); }

    // Answers whether the view moved at all.
    bool Step(const viewer::ViewSnapshot& next);
    [[nodiscard]] const Motion& GetMotion() const noexcept { return m_motion; }
    // Grows with every step: turns in radians, widths by their logarithm, ways as shares of the visible width.
    [[nodiscard]] double GetProgress() const noexcept { return m_progress; }

private:
    // Where a view looks from, and how its pixels lie on the view plane.
    struct Pose {
        std::string kind;
        dg::Location location;
        dg::DPoint2D center;  // of the window, units
        double width = 0;     // of the window, units
        double pixels = 0;
        dg::DPoint2D middle;  // of the view, pixels
        double focus = 0;     // units to the view plane; of perspective views only
        double depth = 0;     // units to the spin centre, along the line of sight; of shape views only
        bool orthographic = true;

        // How many times larger than the window the visible area is at a depth.
        [[nodiscard]] double Spread(double atDepth) const { return orthographic ? 1 : atDepth / focus; }
        [[nodiscard]] dg::DPoint3D ToWorld(const dg::DPoint2D& pixel) const;
    };
    static Pose PoseOf(const viewer::ViewSnapshot& view);
    void FollowAnchor(const Pose& pose);

    Pose m_first;
    Pose m_last;
    std::optional<dg::DPoint2D> m_anchorPixel;
    dg::DPoint3D m_anchor;      // world
    dg::DPoint2D m_anchorSeen;  // pixels, at the latest step
    Motion m_motion;
    double m_progress = 0;
};

// What to put in words: the model that turns under a finger, the picture that fingers move, or the eye.
enum class MotionWords { Model, Picture, Eye };

// As "turned 74 degrees to the right" or "moved 198 px right and 123 px up, zoomed in 1.6 times"; empty when nothing in
// the picture moved by half a pixel. What is small beside the rest of the motion is left out.
[[nodiscard]] std::string Describe(const Motion& motion, MotionWords words);

// What several fingers did to the picture, as "Pan" or "Zoom and twist": what Describe has words for; may be empty.
[[nodiscard]] std::string NameOfPictureMotion(const Motion& motion);

// How far the steps took the picture's edge, or what the anchor was on, all in all; the larger one, in pixels.
[[nodiscard]] double PixelsMoved(const Motion& motion);

// Three digits, without trailing zeros: 0.5, 12.3, 740.
[[nodiscard]] std::string ShortNumber(double value);

// The angle of the rotation between two placements, in degrees.
[[nodiscard]] double TurnDegrees(const dg::Location& from, const dg::Location& to);

}  // namespace replay
