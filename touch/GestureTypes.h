// The kinds of gesture and the states of the recogniser. The state diagram is in docs/GESTURES.md.
#pragma once

#include "host/dg/Point.h"

#include <cstdint>
#include <string_view>

namespace touch {

enum GestureType : std::int32_t {
    GestureNone = 0,           // the finger set has just been read; not yet classified
    GestureTap = 1,            // the touch was turned into a click
    GestureSpin = 2,           // one finger on a 3D view, navigate mode
    GesturePanZoomRotate = 3,  // several fingers on a 3D view
    GestureDrag = 4,           // one finger, multi-select mode
    Gesture2DPan = 5,          // one finger on a 2D view, navigate mode
    Gesture2DZoomPan = 6,      // several fingers on a 2D view
    GestureMarkup = 7,         // markup mode: touch does not navigate
};

enum GestureState : std::int32_t {
    GestureIdle = 0,        // nothing recognised since construction or reset
    GestureStarted = 1,     // the finger set has been read; the kind is decided in the same call
    GestureRecognized = 2,  // the kind is latched; its processor runs on every frame
    GestureEnded = 3,       // the finger of a one-finger gesture was lifted
};

// Several fingers read as one circle.
struct GestureCircle {
    dg::DPoint2D center;  // pixels
    double span;          // pixels; its diameter, 0 for one finger
    double angle;         // radians in [0, 2 pi)
};

[[nodiscard]] constexpr std::string_view NameOf(GestureType gesture) noexcept {
    switch (gesture) {
    case GestureNone: return "GestureNone";
    case GestureTap: return "GestureTap";
    case GestureSpin: return "GestureSpin";
    case GesturePanZoomRotate: return "GesturePanZoomRotate";
    case GestureDrag: return "GestureDrag";
    case Gesture2DPan: return "Gesture2DPan";
    case Gesture2DZoomPan: return "Gesture2DZoomPan";
    case GestureMarkup: return "GestureMarkup";
    }
    return "?";
}

[[nodiscard]] constexpr std::string_view NameOf(GestureState state) noexcept {
    switch (state) {
    case GestureIdle: return "GestureIdle";
    case GestureStarted: return "GestureStarted";
    case GestureRecognized: return "GestureRecognized";
    case GestureEnded: return "GestureEnded";
    }
    return "?";
}

}  // namespace touch
