// How a view moved, measured from what it shows, and the words for it.
#pragma once

#include "host/dg/Vec.h"
#include "viewer/ViewSnapshot.h"

#include <string>

namespace replay {

// The way from one moment to another. Turns are those of the model as it is seen on the screen: about X (to the right)
// positive is downward, about Y (up) to the right, about Z (towards the eye) counter-clockwise. Degrees and model
// units.
struct Motion {
    bool orthographic = true;  // also for 2D views
    double netDegrees = 0;     // of the one rotation from the first to the last moment, in [0, 180]
    double turnedDegrees = 0;  // sum over all steps, whatever their directions
    dg::DVec3 sweptDegrees;    // sum of all steps' rotation vectors, so that there and back is nothing
    dg::DVec3 eyeTravel;       // of the eye, along the first moment's axes: right, up, backward
    double eyePath = 0;        // sum over all steps
    dg::DVec2 shift;           // of what stood in the middle of the view: right, up, along the last moment's axes
    double firstWidth = 0;     // visible width on the view plane
    double lastWidth = 0;
};

// Adds up the steps of a view. A step to another kind of view measures nothing.
class MotionMeter {
public:
    explicit MotionMeter(const viewer::ViewSnapshot& first);

    // Answers whether the view moved at all.
    bool Step(const viewer::ViewSnapshot& next);
    [[nodiscard]] const Motion& GetMotion() const noexcept { return m_motion; }
    // Grows with every step: turns in radians, widths by their logarithm, ways as shares of the visible width.
    [[nodiscard]] double GetProgress() const noexcept { return m_progress; }

private:
    struct Pose {
        std::string kind;
        dg::Location location;
        double width = 0;
        bool orthographic = true;
    };
    static Pose PoseOf(const viewer::ViewSnapshot& view);

    Pose m_first;
    Pose m_last;
    Motion m_motion;
    double m_progress = 0;
};

// What to put in words: the model that turns under a finger, the picture that fingers move, or the eye.
enum class MotionWords { Model, Picture, Eye };

// As "turned 74 degrees to the right" or "moved 2.5 right, zoomed in: width from 16 to 8"; empty when nothing worth a
// word happened: less than a twentieth of a degree, less than a thousandth of the visible width.
[[nodiscard]] std::string Describe(const Motion& motion, MotionWords words);

// Whether nothing happened that Describe would have a word for.
[[nodiscard]] bool IsStill(const Motion& motion);

// Three digits, without trailing zeros: 0.5, 12.3, 740.
[[nodiscard]] std::string ShortNumber(double value);

// The angle of the rotation between two placements, in degrees.
[[nodiscard]] double TurnDegrees(const dg::Location& from, const dg::Location& to);

}  // namespace replay
