// Adds a view's steps up and puts them into words. What is worth a word is measured in pixels at the picture's edge, so
// that one limit holds for turns, zooms and ways alike.
#include "replay/story/ViewMotion.h"

#include "host/dg/Matrix.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <numbers>
#include <utility>
#include <vector>

namespace replay {

namespace {

constexpr double DegreesPerRadian = 180 / std::numbers::pi;
constexpr double SmallestPixels = 0.5;     // at the picture's edge; less is not worth a word
constexpr double RoundTripPixels = 12;     // a shorter way that leads back is tremor
constexpr double StraightTolerance = 1.1;  // a way this many times the net way still counts as straight
constexpr double StraightSlack = 1;        // degrees
constexpr double StraightPixels = 10;      // what a finger's tremor adds to a way
constexpr double OneWayShare = 0.7;        // of a way, left over when to and fro cancel out: it went one way mostly
constexpr double SideShare = 0.03;         // of a motion; less in another direction is not worth a word
constexpr double TripShare = 0.3;          // the same for a way that leads back

dg::DVec3 InAxes(const dg::Location& axes, const dg::DVec3& world) {
    return dg::DMat33(axes.GetMat()) * world;
}

// The rotation, as axis times angle in degrees, by which the model seems to turn on the screen when the eye goes from
// one placement to another.
dg::DVec3 TurnOnScreen(const dg::Location& from, const dg::Location& to) {
    // Eye coordinates e become R e with R = to from^T, both having their axes as rows.
    const dg::FMat33& a = from.GetMat();
    const dg::FMat33& b = to.GetMat();
    double r[3][3];
    for (int i = 0; i < 3; ++i) {
        for (int j = 0; j < 3; ++j) {
            r[i][j] = dg::DotProduct(dg::DVec3(b.Row(i)), dg::DVec3(a.Row(j)));
        }
    }
    const dg::DVec3 twiceSine{r[2][1] - r[1][2], r[0][2] - r[2][0], r[1][0] - r[0][1]};
    const double angle = std::atan2(twiceSine.Norm(), r[0][0] + r[1][1] + r[2][2] - 1);
    dg::DVec3 axis = twiceSine;
    if (twiceSine.Norm() < 1e-6 && angle > 1) {
        // Half a turn: R + I is twice the axis times itself, and its largest column gives the axis.
        int k = r[0][0] > r[1][1] ? 0 : 1;
        k = r[2][2] > r[k][k] ? 2 : k;
        axis = {r[0][k] + (k == 0 ? 1 : 0), r[1][k] + (k == 1 ? 1 : 0), r[2][k] + (k == 2 ? 1 : 0)};
    }
    axis.Normalize();
    return axis * (angle * DegreesPerRadian);
}

// One decimal place below a limit, where that is more than nothing, and none from there on.
std::string Rounded(double value, double limit) {
    const double scale = std::abs(value) < limit ? 10 : 1;
    const double rounded = std::round(value * scale) / scale;
    return ShortNumber(rounded != 0 ? rounded : value);
}

std::string Degrees(double degrees) {
    const std::string number = Rounded(degrees, 100);
    return number + (number == "1" ? " degree" : " degrees");
}

std::string Pixels(double pixels) {
    return Rounded(pixels, 10) + " px";
}

std::string Units(double units) {
    return ShortNumber(units) + " units";
}

std::string Joined(const std::vector<std::string>& parts, const char* separator) {
    std::string text;
    for (const std::string& part : parts) {
        text += (text.empty() ? "" : separator) + part;
    }
    return text;
}

// "to the right and up": the directions that matter beside the largest one.
std::string Directions(const dg::DVec3& swept) {
    constexpr double Share = 0.35;
    const double norm = swept.Norm();
    std::vector<std::string> words;
    if (std::abs(swept.y) > Share * norm) {
        words.emplace_back(swept.y > 0 ? "to the right" : "to the left");
    }
    if (std::abs(swept.x) > Share * norm) {
        words.emplace_back(swept.x > 0 ? "down" : "up");
    }
    if (std::abs(swept.z) > Share * norm) {
        words.emplace_back(swept.z > 0 ? "counter-clockwise" : "clockwise");
    }
    return Joined(words, " and ");
}

// A way along one direction, when it is worth a word: "12 px right".
void AddWay(std::vector<std::string>& parts, double way, double smallest, std::string (*textOf)(double),
            const char* positive, const char* negative) {
    if (std::abs(way) >= smallest) {
        parts.push_back(textOf(std::abs(way)) + " " + (way > 0 ? positive : negative));
    }
}

// From the middle of the picture to its edge, pixels.
double EdgePixels(const Motion& motion) {
    return motion.pixels / 2;
}

double TurnPixels(const Motion& motion, double degrees) {
    return std::abs(degrees) / DegreesPerRadian * EdgePixels(motion);
}

double ZoomLogarithm(const Motion& motion) {
    return motion.firstWidth > 0 && motion.lastWidth > 0 ? std::log(motion.lastWidth / motion.firstWidth) : 0;
}

// What of a motion of the picture is worth a word.
enum class Worth { Nothing, WayBack, Way };  // a way that leads back to where it began; a way that leads elsewhere

struct PictureMotion {
    Worth pan = Worth::Nothing;
    Worth zoom = Worth::Nothing;
    Worth twist = Worth::Nothing;
    double smallest = SmallestPixels;  // pixels, of what is worth a word
};

PictureMotion WorthOf(const Motion& motion) {
    const double pan = std::hypot(motion.shift.x, motion.shift.y);
    const double zoom = std::abs(ZoomLogarithm(motion)) * EdgePixels(motion);
    const double twist = TurnPixels(motion, motion.sweptDegrees.z);
    const double zoomPath = motion.zoomPath * EdgePixels(motion);
    const double twistPath = TurnPixels(motion, motion.twistPath);
    PictureMotion worth;
    worth.smallest = std::max(SmallestPixels, SideShare * std::max({pan, zoom, twist}));
    const double smallestTrip =
        std::max(RoundTripPixels, TripShare * std::max({motion.shiftPath, zoomPath, twistPath}));
    const auto of = [&](double way, double path) {
        return way >= worth.smallest ? Worth::Way : path >= smallestTrip ? Worth::WayBack : Worth::Nothing;
    };
    worth.pan = of(pan, motion.shiftPath);
    worth.zoom = of(zoom, zoomPath);
    worth.twist = of(twist, twistPath);
    return worth;
}

std::string DescribeModel(const Motion& motion) {
    if (!(TurnPixels(motion, motion.turnedDegrees) >= SmallestPixels)) {
        return "";
    }
    const bool straight = motion.turnedDegrees <= motion.netDegrees * StraightTolerance + StraightSlack;
    if (straight && TurnPixels(motion, motion.netDegrees) >= SmallestPixels) {
        return "turned " + Degrees(motion.netDegrees) + " " + Directions(motion.sweptDegrees);
    }
    const bool oneWay = motion.sweptDegrees.Norm() > OneWayShare * motion.turnedDegrees;
    const std::string end = TurnPixels(motion, motion.netDegrees) < SmallestPixels
                                ? "ends where it began"
                                : "ends " + Degrees(motion.netDegrees) + " from where it began";
    return "turned " + Degrees(motion.turnedDegrees) + " along the way, " +
           (oneWay ? "mostly " + Directions(motion.sweptDegrees) + ", " : "") + end;
}

std::string TwistText(const Motion& motion) {
    return "turned " + Degrees(std::abs(motion.sweptDegrees.z)) +
           (motion.sweptDegrees.z > 0 ? " counter-clockwise" : " clockwise");
}

std::string PanText(const Motion& motion, double smallest) {
    std::vector<std::string> ways;
    const double way = std::hypot(motion.shift.x, motion.shift.y);
    const double smallestWay = std::min(std::max(smallest, SideShare * way), way / 2);
    AddWay(ways, motion.shift.x, smallestWay, Pixels, "right", "left");
    AddWay(ways, motion.shift.y, smallestWay, Pixels, "up", "down");
    const bool detour = motion.shiftPath > way * StraightTolerance + StraightPixels;
    return "moved " + Joined(ways, " and ") + (detour ? " (" + Pixels(motion.shiftPath) + " along the way)" : "");
}

std::string ZoomText(const Motion& motion) {
    const bool isIn = motion.lastWidth < motion.firstWidth;
    const double factor = isIn ? motion.firstWidth / motion.lastWidth : motion.lastWidth / motion.firstWidth;
    return std::string(isIn ? "zoomed in " : "zoomed out ") + ShortNumber(factor) + " times (width " +
           ShortNumber(motion.firstWidth) + " to " + Units(motion.lastWidth) + ")";
}

std::string DescribePicture(const Motion& motion) {
    const PictureMotion worth = WorthOf(motion);
    std::vector<std::string> parts;
    if (worth.pan != Worth::Nothing) {
        parts.push_back(worth.pan == Worth::Way ? PanText(motion, worth.smallest)
                                                : "moved " + Pixels(motion.shiftPath) + " there and back");
    }
    if (worth.zoom != Worth::Nothing) {
        parts.push_back(worth.zoom == Worth::Way ? ZoomText(motion) : "zoomed there and back");
    }
    if (worth.twist != Worth::Nothing) {
        parts.push_back(worth.twist == Worth::Way ? TwistText(motion)
                                                  : "turned " + Degrees(motion.twistPath) + " there and back");
    }
    return Joined(parts, ", ");
}

std::string DescribeEye(const Motion& motion) {
    std::vector<std::string> parts;
    std::vector<std::string> ways;
    const double pixel = motion.pixels > 0 ? motion.firstWidth / motion.pixels : 0;
    const double smallestWay = std::max(SmallestPixels * pixel, SideShare * motion.eyePath);
    if (motion.eyePath > 0) {
        AddWay(ways, -motion.eyeTravel.z, smallestWay, Units, "forward", "back");
        AddWay(ways, motion.eyeTravel.x, smallestWay, Units, "right", "left");
        AddWay(ways, motion.eyeTravel.y, smallestWay, Units, "up", "down");
    }
    if (!ways.empty()) {
        const double way = motion.eyeTravel.Norm();
        const bool detour = motion.eyePath > way * StraightTolerance + StraightPixels * pixel;
        parts.push_back("the eye moved " + Joined(ways, ", ") +
                        (detour ? " (" + Units(motion.eyePath) + " along the way)" : ""));
    }
    // The eye turns against the turn that is seen: to the right when what is before it turns to the left, which, seen
    // from the middle of the turn, is a positive turn about Y.
    std::vector<std::string> turns;
    const double onePixel = EdgePixels(motion) > 0 ? DegreesPerRadian / EdgePixels(motion) : 0;
    const double smallestTurn = std::max(SmallestPixels * onePixel, SideShare * motion.turnedDegrees);
    if (motion.turnedDegrees > 0) {
        AddWay(turns, motion.sweptDegrees.y, smallestTurn, Degrees, "to the right", "to the left");
        AddWay(turns, -motion.sweptDegrees.x, smallestTurn, Degrees, "up", "down");
    }
    if (!turns.empty()) {
        parts.push_back("looked " + Joined(turns, " and "));
    }
    if (motion.turnedDegrees > 0 && std::abs(motion.sweptDegrees.z) >= smallestTurn) {
        parts.push_back(TwistText(motion));
    }
    return Joined(parts, ", ");
}

}  // namespace

MotionMeter::MotionMeter(const viewer::ViewSnapshot& first, const std::optional<dg::DPoint2D>& anchor)
    : m_first(PoseOf(first)), m_last(m_first), m_anchorPixel(anchor), m_anchorSeen(anchor.value_or(m_first.middle)) {
    m_anchor = m_first.ToWorld(m_anchorSeen);
    m_motion.orthographic = m_first.orthographic;
    m_motion.pixels = m_first.pixels;
    m_motion.firstWidth = m_first.width * m_first.Spread(m_first.depth);
    m_motion.lastWidth = m_motion.firstWidth;
}

MotionMeter::Pose MotionMeter::PoseOf(const viewer::ViewSnapshot& view) {
    Pose pose;
    pose.kind = view.kind;
    pose.pixels = view.width;
    pose.middle = {view.width / 2.0, view.height / 2.0};
    if (view.kind != "shapeview") {
        pose.location = view.placement;
        pose.width = view.orthoWidth;
        return pose;
    }
    double left = 0;
    double right = 0;
    double bottom = 0;
    double top = 0;
    double distance = 0;
    view.camera.GetProjection(left, right, bottom, top, distance, pose.orthographic);
    pose.location = view.camera.GetLocation();
    pose.width = right - left;
    pose.center = {(left + right) / 2, (bottom + top) / 2};
    pose.focus = std::abs(distance);
    // A spin centre behind the eye says nothing about what is seen.
    pose.depth = std::max(-InAxes(pose.location, view.spinCenter - pose.location.GetPos()).z, pose.focus);
    return pose;
}

dg::DPoint3D MotionMeter::Pose::ToWorld(const dg::DPoint2D& pixel) const {
    const double unit = pixels > 0 ? width / pixels : 0;
    const double spread = Spread(depth);
    const double x = (center.x + (pixel.x - middle.x) * unit) * spread;
    const double y = (center.y + (pixel.y - middle.y) * unit) * spread;
    const dg::DVec3 offset = dg::DVec3(location.GetU()) * x + dg::DVec3(location.GetV()) * y;
    return location.GetPos() + offset + dg::DVec3(location.GetW()) * -depth;
}

// Where the anchor is seen now, and how wide the view is there.
void MotionMeter::FollowAnchor(const Pose& pose) {
    const dg::DVec3 local = InAxes(pose.location, m_anchor - pose.location.GetPos());
    const double spread = pose.Spread(-local.z);
    const double width = pose.width * spread;
    if (!(width > 0) || !(spread > 0)) {
        return;  // flown past
    }
    const dg::DPoint2D seen{pose.middle.x + (local.x / spread - pose.center.x) * pose.pixels / pose.width,
                            pose.middle.y + (local.y / spread - pose.center.y) * pose.pixels / pose.width};
    m_motion.shiftPath += std::hypot(seen.x - m_anchorSeen.x, seen.y - m_anchorSeen.y);
    m_anchorSeen = seen;
    const dg::DPoint2D start = m_anchorPixel.value_or(m_first.middle);
    m_motion.shift = {seen.x - start.x, seen.y - start.y};
    if (m_motion.lastWidth > 0) {
        m_motion.zoomPath += std::abs(std::log(width / m_motion.lastWidth));
    }
    m_motion.lastWidth = width;
}

bool MotionMeter::Step(const viewer::ViewSnapshot& next) {
    const Pose pose = PoseOf(next);
    if (pose.kind != m_last.kind || (pose.location == m_last.location && pose.width == m_last.width)) {
        return false;
    }
    const dg::DVec3 turn = TurnOnScreen(m_last.location, pose.location);
    const double way = (pose.location.GetPos() - m_last.location.GetPos()).Norm();
    m_motion.turnedDegrees += turn.Norm();
    m_motion.sweptDegrees += turn;
    m_motion.twistPath += std::abs(turn.z);
    m_motion.eyePath += way;
    const double shifted = m_motion.shiftPath;
    FollowAnchor(pose);
    // The eye that turns about something also moves, and so does what the anchor was on: the larger part counts.
    const double wide = pose.width * pose.Spread(m_first.depth);
    const double moved = !pose.orthographic && wide > 0 ? way / wide : 0;
    const double seen = pose.pixels > 0 ? (m_motion.shiftPath - shifted) / pose.pixels : 0;
    m_progress += std::max({turn.Norm() / DegreesPerRadian, moved, seen});
    if (pose.width > 0 && m_last.width > 0) {
        m_progress += std::abs(std::log(pose.width / m_last.width));
    }
    m_last = pose;
    m_motion.netDegrees = TurnDegrees(m_first.location, pose.location);
    m_motion.eyeTravel = InAxes(m_first.location, pose.location.GetPos() - m_first.location.GetPos());
    return true;
}

std::string Describe(const Motion& motion, MotionWords words) {
    switch (words) {
    case MotionWords::Model: return DescribeModel(motion);
    case MotionWords::Picture: return DescribePicture(motion);
    case MotionWords::Eye: return DescribeEye(motion);
    }
    return "";  // a value outside the enumeration
}

std::string NameOfPictureMotion(const Motion& motion) {
    const PictureMotion worth = WorthOf(motion);
    std::vector<std::string> names;
    for (const auto& [part, name] : {std::pair(worth.pan, "pan"), {worth.zoom, "zoom"}, {worth.twist, "twist"}}) {
        if (part != Worth::Nothing) {
            names.emplace_back(name);
        }
    }
    std::string text = names.size() == 3 ? "pan, zoom and twist" : Joined(names, " and ");
    if (!text.empty()) {
        text[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(text[0])));
    }
    return text;
}

double PixelsMoved(const Motion& motion) {
    const bool isEye = !motion.orthographic && motion.firstWidth > 0;
    return std::max({TurnPixels(motion, motion.turnedDegrees), motion.shiftPath, motion.zoomPath * EdgePixels(motion),
                     isEye ? motion.eyePath / motion.firstWidth * motion.pixels : 0});
}

std::string ShortNumber(double value) {
    const double size = std::abs(value);
    const bool plain = size == 0 || (size >= 0.01 && size < 1e6);
    const int digits = size >= 100 ? 0 : size >= 10 ? 1 : 2;
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), plain ? "%.*f" : "%.*g", plain ? digits : 3, value);
    std::string number = text.data();
    if (plain && number.find('.') != std::string::npos) {
        number.erase(number.find_last_not_of('0') + 1);
        if (number.back() == '.') {
            number.pop_back();
        }
    }
    return number;
}

double TurnDegrees(const dg::Location& from, const dg::Location& to) {
    return TurnOnScreen(from, to).Norm();
}

}  // namespace replay
