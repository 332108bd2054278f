#include "replay/ViewMotion.h"

#include "host/dg/Matrix.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <numbers>
#include <vector>

namespace replay {

namespace {

constexpr double DegreesPerRadian = 180 / std::numbers::pi;
constexpr double SmallestTurn = 0.05;      // degrees; less is not worth a word
constexpr double SmallestShare = 0.001;    // of the visible width
constexpr double RoundTripShare = 0.01;    // of the visible width; a shorter way that leads back is tremor
constexpr double StraightTolerance = 1.1;  // a way this many times the net turn still counts as straight
constexpr double OneWayShare = 0.7;        // of a way, left over when to and fro cancel out: it went one way mostly
constexpr double SideShare = 0.03;         // of a way or turn; less in another direction is not worth a word
constexpr double StraightSlack = 1;        // degrees

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

std::string Degrees(double degrees) {
    const std::string number = degrees < SmallestTurn ? "0" : ShortNumber(degrees);
    return number + (number == "1" ? " degree" : " degrees");
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

// A way along one direction, when it is worth a word.
void AddWay(std::vector<std::string>& parts, double way, double smallest, const char* positive, const char* negative) {
    if (std::abs(way) > smallest) {
        parts.push_back(ShortNumber(std::abs(way)) + " " + (way > 0 ? positive : negative));
    }
}

std::string DescribeModel(const Motion& motion) {
    if (!(motion.turnedDegrees >= SmallestTurn)) {
        return "";
    }
    const bool straight = motion.turnedDegrees <= motion.netDegrees * StraightTolerance + StraightSlack;
    if (straight) {
        return "turned " + Degrees(motion.netDegrees) + " " + Directions(motion.sweptDegrees);
    }
    const bool oneWay = motion.sweptDegrees.Norm() > OneWayShare * motion.turnedDegrees;
    return "turned " + Degrees(motion.turnedDegrees) + " along the way, " +
           (oneWay ? "mostly " + Directions(motion.sweptDegrees) + ", " : "") + "ends " + Degrees(motion.netDegrees) +
           " from where it began";
}

void AddTwist(std::vector<std::string>& parts, const Motion& motion) {
    const double smallest = std::max(SmallestTurn, SideShare * motion.turnedDegrees);
    if (std::abs(motion.sweptDegrees.z) >= smallest) {
        parts.push_back("turned " + Degrees(std::abs(motion.sweptDegrees.z)) +
                        (motion.sweptDegrees.z > 0 ? " counter-clockwise" : " clockwise"));
    }
}

std::string DetourText(double path, double straight) {
    return path > straight * StraightTolerance ? " (" + ShortNumber(path) + " along the way)" : "";
}

std::string DescribePicture(const Motion& motion) {
    std::vector<std::string> parts;
    std::vector<std::string> ways;
    const double smallest = SmallestShare * std::abs(motion.firstWidth);
    const double way = std::hypot(motion.shift.x, motion.shift.y);
    const double smallestWay = std::max(smallest, SideShare * way);
    AddWay(ways, motion.shift.x, smallestWay, "right", "left");
    AddWay(ways, motion.shift.y, smallestWay, "up", "down");
    // A twist about a point beside the middle also moves the middle, on an arc.
    const bool twisted = motion.turnedDegrees >= SmallestTurn;
    if (!ways.empty()) {
        parts.push_back("moved " + Joined(ways, " and ") + (twisted ? "" : DetourText(motion.eyePath, way)));
    } else if (!twisted && motion.eyePath > RoundTripShare * std::abs(motion.firstWidth)) {
        parts.push_back("moved " + ShortNumber(motion.eyePath) + " along the way, and back");
    }
    if (std::abs(motion.lastWidth - motion.firstWidth) > smallest) {
        parts.push_back(std::string(motion.lastWidth < motion.firstWidth ? "zoomed in" : "zoomed out") +
                        ": width from " + ShortNumber(motion.firstWidth) + " to " + ShortNumber(motion.lastWidth));
    }
    AddTwist(parts, motion);
    return Joined(parts, ", ");
}

std::string DescribeEye(const Motion& motion) {
    std::vector<std::string> parts;
    std::vector<std::string> ways;
    const double smallestWay = std::max(SmallestShare * std::abs(motion.firstWidth), SideShare * motion.eyePath);
    AddWay(ways, -motion.eyeTravel.z, smallestWay, "forward", "back");
    AddWay(ways, motion.eyeTravel.x, smallestWay, "right", "left");
    AddWay(ways, motion.eyeTravel.y, smallestWay, "up", "down");
    if (!ways.empty()) {
        parts.push_back("the eye moved " + Joined(ways, ", ") + DetourText(motion.eyePath, motion.eyeTravel.Norm()));
    }
    // The eye turns against the turn that is seen: to the right when what is before it turns to the left, which, seen
    // from the middle of the turn, is a positive turn about Y.
    std::vector<std::string> turns;
    const double smallestTurn = std::max(SmallestTurn, SideShare * motion.turnedDegrees);
    AddWay(turns, motion.sweptDegrees.y, smallestTurn, "degrees to the right", "degrees to the left");
    AddWay(turns, -motion.sweptDegrees.x, smallestTurn, "degrees up", "degrees down");
    if (!turns.empty()) {
        parts.push_back("looked " + Joined(turns, " and "));
    }
    AddTwist(parts, motion);
    return Joined(parts, ", ");
}

}  // namespace

MotionMeter::MotionMeter(const viewer::ViewSnapshot& first) : m_first(PoseOf(first)), m_last(m_first) {
    m_motion.orthographic = m_first.orthographic;
    m_motion.firstWidth = m_first.width;
    m_motion.lastWidth = m_first.width;
}

MotionMeter::Pose MotionMeter::PoseOf(const viewer::ViewSnapshot& view) {
    Pose pose;
    pose.kind = view.kind;
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
    return pose;
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
    m_motion.eyePath += way;
    m_progress += turn.Norm() / DegreesPerRadian + (pose.width > 0 ? way / pose.width : 0);
    if (pose.width > 0 && m_last.width > 0) {
        m_progress += std::abs(std::log(pose.width / m_last.width));
    }
    m_last = pose;

    const dg::DVec3 travel = pose.location.GetPos() - m_first.location.GetPos();
    const dg::DVec3 shift = InAxes(pose.location, -travel);
    m_motion.netDegrees = TurnDegrees(m_first.location, pose.location);
    m_motion.eyeTravel = InAxes(m_first.location, travel);
    m_motion.shift = {shift.x, shift.y};
    m_motion.lastWidth = pose.width;
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

bool IsStill(const Motion& motion) {
    const double smallest = SmallestShare * std::abs(motion.firstWidth);
    return motion.turnedDegrees < SmallestTurn && motion.eyePath <= smallest &&
           std::abs(motion.lastWidth - motion.firstWidth) <= smallest;
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
