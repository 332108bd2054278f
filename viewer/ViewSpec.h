// What a reference viewer is set up with: plain descriptions of views and of the host's own choices.
#pragma once

#include "host/dg/Box.h"
#include "host/dg/Location.h"
#include "host/dg/Point.h"

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace viewer {

// A camera of a 3D view. The window is on the view plane, in model units.
struct CameraSpec {
    bool orthographic = true;
    double left = -8;
    double right = 8;
    double bottom = -5;
    double top = 5;
    double distance = 1;  // of the view plane, positive
    dg::Location location;

    friend bool operator==(const CameraSpec&, const CameraSpec&) = default;
};

using PreferenceValues = std::map<std::string, bool>;

// The kinds of view a viewer can open. Other is a view of a kind that no component knows.
inline constexpr std::array<const char*, 8> ViewKinds = {"shapeview",          "drawingview", "imageview",
                                                         "ecadschematicview",  "ecadpcbview", "schematicfigureview",
                                                         "illustration2dview", "other"};

[[nodiscard]] bool IsShapeViewKind(const std::string& kind);
[[nodiscard]] bool Is2DViewKind(const std::string& kind);

// One view, as it is opened.
struct ViewSpec {
    std::string kind = "shapeview";  // one of ViewKinds
    std::uint32_t width = 1280;      // pixels
    std::uint32_t height = 800;      // pixels

    // Shape views only.
    CameraSpec camera;
    dg::DPoint3D spinCenter;
    dg::DBox bounds;  // world units; empty by default
    std::string navMethod = "standard";
    double navSpeed = 1;

    // 2D views only.
    double orthoWidth = 16;  // visible width in model units
    dg::Location placement;  // its position is the centre of the visible area

    // The view's default preference set; without a value the view has none.
    std::optional<PreferenceValues> preferences;

    friend bool operator==(const ViewSpec&, const ViewSpec&) = default;
};

// What the host changes of the attached shape view; what has no value stays as it is.
struct ViewChange {
    std::optional<CameraSpec> camera;
    std::optional<dg::DPoint3D> spinCenter;
    std::optional<dg::DBox> bounds;
    std::optional<std::string> navMethod;
    std::optional<double> navSpeed;

    friend bool operator==(const ViewChange&, const ViewChange&) = default;
};

// How the host treats a request for a view's bounding box.
enum class BoundsAnswer {
    NextTick,  // answered with status 0 at the start of the next tick
    Failed,    // answered with status 1 at the same moment
    Never,     // accepted, never answered
    Refused,   // not accepted
};

// The host's own choices, fixed for the life of a viewer.
struct HostSettings {
    int ppiX = 96;                         // what the display query answers, horizontally; 0 is allowed
    int ppiY = 96;                         // and vertically
    std::vector<std::string> environment;  // the switches that are present
    bool preselectGuard = false;           // the workflow base's second boolean
    BoundsAnswer boundsAnswer = BoundsAnswer::NextTick;
    bool playTransitions = true;  // whether spin transitions move the camera on later ticks

    friend bool operator==(const HostSettings&, const HostSettings&) = default;
};

}  // namespace viewer
