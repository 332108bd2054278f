// The motion model: what a touch screen sees of a hand that carries out planned movements.
//
// A planned movement becomes contact positions in four steps: a minimum-jerk stroke (the bell-shaped speed of a
// reaching hand), the settling of the finger pad on landing and its roll on lift-off, physiological tremor, and the
// controller (noise, then a hysteresis that keeps a resting finger quiet). The model is deterministic: equal paths and
// an equal seed give equal scans. Tests: tests/replay/MotionTest.cpp
#pragma once

#include <cstddef>
#include <cstdint>
#include <variant>
#include <vector>

namespace replay::motion {

// A position on the screen in millimetres from the screen's centre, x to the right, y up.
struct Point {
    double x = 0;
    double y = 0;
};

// A stroke from where the finger is to another place.
struct Reach {
    double startMs = 0;
    double durationMs = 0;  // more than 0
    Point to;
    double bowMm = 0;  // how far the path swings out half way; positive: to the left of its direction
};

// A stroke about a centre.
struct Turn {
    double startMs = 0;
    double durationMs = 0;  // more than 0
    Point centre;
    double angle = 0;         // radians, positive counter-clockwise
    double radiusFactor = 1;  // radius at the end of the stroke, as a multiple of that at its start
};

using Stroke = std::variant<Reach, Turn>;

// One contact, from landing to lift. A finger that lands twice is two paths. A stroke that outlasts the contact is cut
// off by the lift.
struct FingerPath {
    double downMs = 0;
    double upMs = 0;
    Point landing;
    std::vector<Stroke> strokes;  // in time order, not overlapping; in between the finger rests
};

struct Contact {
    std::size_t finger = 0;  // index of the path
    Point position;
};

// What the controller reports at one moment: every finger in contact, in the order of the paths.
struct Scan {
    std::int64_t timeUs = 0;
    std::vector<Contact> contacts;
};

// The scans of all paths, from time 0 to the first one after the last lift, about 111 a second. Times rise strictly, no
// two are 10 ms apart or more.
std::vector<Scan> Observe(const std::vector<FingerPath>& fingers, std::uint64_t seed);

}  // namespace replay::motion
