// The bundled gestures, finger by finger, in milliseconds and millimetres on the screen. Where a view of 1280 x 800
// pixels fills the screen, 100 mm are 247 pixels.
#include "tools/motion/GestureCatalogue.h"

#include "tools/motion/EvemuWriter.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace replay::motion {

namespace {

constexpr double InchMm = 25.4;

Point operator+(Point a, Point b) {
    return {a.x + b.x, a.y + b.y};
}

double Radians(double degrees) {
    return degrees * std::numbers::pi / 180;
}

Point Polar(Point centre, double radius, double degrees) {
    return {centre.x + radius * std::cos(Radians(degrees)), centre.y + radius * std::sin(Radians(degrees))};
}

FingerPath Still(double downMs, double upMs, Point at) {
    return {downMs, upMs, at, {}};
}

// Two fingers on a line through a centre that slide along it, the distance between them going from one value to
// another. The finger on the right is the first.
std::vector<FingerPath> Pinch(Point centre, double degrees, double fromInches, double toInches, double durationMs) {
    const double from = fromInches * InchMm / 2;
    const double to = toInches * InchMm / 2;
    const double startMs = 80;
    const double upMs = startMs + durationMs + 90;
    return {{0, upMs, Polar(centre, from, degrees), {Reach{startMs, durationMs, Polar(centre, to, degrees), 1.5}}},
            {13,
             upMs + 24,
             Polar(centre, from, degrees + 180),
             {Reach{startMs + 7, durationMs, Polar(centre, to, degrees + 180), 1.2}}}};
}

// Two fingers of one hand, 1.3 inches apart, that carry out the same strokes. The strokes of the first are given.
std::vector<FingerPath> TwoFingers(double downMs, double upMs, Point at, const std::vector<Reach>& strokes) {
    const Point apart{32, 8};
    FingerPath first{downMs, upMs, at, {}};
    FingerPath second{downMs + 11, upMs + 12, at + apart, {}};
    for (const Reach& stroke : strokes) {
        first.strokes.emplace_back(stroke);
        second.strokes.emplace_back(
            Reach{stroke.startMs + 5, stroke.durationMs, stroke.to + apart, stroke.bowMm * 0.9});
    }
    return {first, second};
}

std::vector<FingerPath> Together(std::vector<FingerPath> left, const std::vector<FingerPath>& right) {
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

std::vector<FingerPath> ThreeFingerHold(double upMs, double liftGapMs) {
    return {Still(0, upMs, {-28, -6}), Still(13, upMs + liftGapMs, {0, 4}), Still(24, upMs + 2 * liftGapMs, {27, -2})};
}

std::vector<Gesture> OneFingerGestures() {
    return {
        {"spin-right",
         "One finger drags 450 pixels to the right, rests and lifts.",
         101,
         {{0, 1090, {-91, 4}, {Reach{80, 900, {91, 8}, 5}}}}},
        {"spin-up",
         "One finger drags 300 pixels up, rests and lifts.",
         102,
         {{0, 1000, {6, -60}, {Reach{80, 800, {2, 61}, -3}}}}},
        {"spin-around",
         "One finger draws a big loop counter-clockwise about the centre, rests and lifts.",
         103,
         {{0, 2400, {85, -10}, {Turn{80, 2200, {0, 0}, Radians(350), 0.93}}}}},
        {"flick",
         "One finger throws to the right and lifts at full speed.",
         104,
         {{0, 215, {-55, -12}, {Reach{50, 300, {80, 16}, 6}}}}},
        {"tap", "One finger taps for 90 ms.", 105, {Still(0, 90, {25, 18})}},
        {"double-tap",
         "One finger taps twice, 150 ms in between.",
         106,
         {Still(0, 85, {20, -10}), Still(235, 325, {21.2, -9.3})}},
        {"drag-2d",
         "One finger drags 300 pixels diagonally up, rests and lifts.",
         107,
         {{0, 1000, {-50, -35}, {Reach{80, 800, {46, 38}, -4}}}}},
        {"press-and-hold", "One finger rests for 1.3 s.", 108, {Still(0, 1300, {-30, 20})}},
    };
}

std::vector<Gesture> OneHandGestures() {
    // The two fingers of the pan stay between 1.5 and 2 inches apart.
    const std::vector<FingerPath> pan{{0, 1150, {-63, -35}, {Reach{80, 950, {17, 15}, 4}}},
                                      {12, 1172, {-18, -27}, {Reach{85, 950, {62, 23}, 3.8}}}};
    // The line between the fingers stays on one side of the vertical, so that left and right finger never swap.
    const std::vector<FingerPath> twist{{0, 1350, Polar({}, 50.8, -40), {Turn{80, 1150, {}, Radians(80), 1.03}}},
                                        {14, 1373, Polar({}, 50.8, 140), {Turn{86, 1150, {}, Radians(80), 1.02}}}};
    std::vector<FingerPath> flight = Pinch({-20, 0}, 15, 2.2, 7, 800);
    const Point shift{65, 4};
    for (FingerPath& finger : flight) {
        finger.upMs += 3200;
        finger.strokes.emplace_back(Reach{2400, 500, std::get<Reach>(finger.strokes.front()).to + shift, 3});
    }
    return {
        {"two-finger-tap",
         "Two fingers tap together for 0.2 s.",
         201,
         {Still(0, 185, {-12, 0}), Still(14, 217, {10, 8})}},
        {"pan", "Two fingers, 1.8 inches apart, move to the right and up together.", 202, pan},
        {"pinch-open", "Two fingers spread from 2.2 to 5 inches about the centre.", 203, Pinch({}, 20, 2.2, 5, 900)},
        {"pinch-close", "Two fingers close from 5 to 2.2 inches about the centre.", 204, Pinch({}, 25, 5, 2.2, 900)},
        {"twist", "Two fingers, 4 inches apart, turn by 80 degrees counter-clockwise about the centre.", 205, twist},
        {"pinch-2d", "Two fingers spread from 2.4 to 4.8 inches beside the centre.", 206,
         Pinch({20, 10}, 50, 2.4, 4.8, 900)},
        {"one-hand-flight", "Two fingers spread to 7 inches, hold, shift to the right as one and hold again.", 207,
         flight},
        {"three-finger-hold", "Three fingers rest for 3.3 s.", 208, ThreeFingerHold(3330, 14)},
    };
}

std::vector<Gesture> LongGestures() {
    const std::vector<FingerPath> apart = Together(TwoFingers(0, 1400, {-105, -4}, {Reach{110, 1100, {-157, -8}, -3}}),
                                                   TwoFingers(18, 1430, {73, -4}, {Reach{118, 1100, {125, -1}, 3}}));
    const std::vector<FingerPath> flight =
        Together(TwoFingers(0, 4000, {-126, -44}, {Reach{150, 600, {-124, 36}, 2}}),
                 TwoFingers(20, 4030, {94, -14}, {Reach{2100, 500, {159, -11}, -2}}));
    // The three fingers lift within one scan: no finger is left behind to drag once the mode has changed.
    std::vector<FingerPath> select = ThreeFingerHold(3330, 0);
    select.push_back({4130, 5350, {-70, 45}, {Reach{4220, 1000, {75, -40}, 4}}});
    return {
        {"two-hands", "Two fingers of each hand, the hands 7 inches apart, move apart to 11 inches.", 301, apart},
        {"two-hands-flight",
         "Two fingers of each hand: the left hand moves up and holds, then the right hand moves right and holds.", 302,
         flight},
        {"select-drag", "Three fingers rest for 3.3 s and lift; then one finger drags diagonally down.", 303, select},
    };
}

std::vector<Gesture> AllGestures() {
    std::vector<Gesture> all;
    for (std::vector<Gesture>& part : std::vector{OneFingerGestures(), OneHandGestures(), LongGestures()}) {
        all.insert(all.end(), part.begin(), part.end());
    }
    return all;
}

}  // namespace

const std::vector<Gesture>& Catalogue() {
    static const std::vector<Gesture> all = AllGestures();
    return all;
}

const Gesture* FindGesture(std::string_view name) {
    const auto found = std::ranges::find(Catalogue(), name, &Gesture::name);
    return found == Catalogue().end() ? nullptr : &*found;
}

std::string FileName(const Gesture& gesture) {
    return std::string(gesture.name) + ".evemu";
}

std::string MakeRecording(const Gesture& gesture) {
    return WriteEvemu(Observe(gesture.fingers, gesture.seed), gesture.title);
}

}  // namespace replay::motion
