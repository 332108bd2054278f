// Whether a gesture stands for itself is known only at the end of its touch, so all of a touch are kept until then. The
// moments of each are thinned by half whenever there are too many.
#include "replay/story/GestureTracker.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace replay {

namespace {

constexpr double JoiningSeconds = 0.08;  // fingers of one hand land and lift within this time of each other
constexpr double SilenceSeconds = 0.5;   // more without a frame ends a touch
constexpr double SlipPixels = 6;         // that the rest of a hand may move the picture's edge meanwhile
constexpr std::size_t MostMoments = 32;  // of a gesture; beyond it every other one is dropped

bool HasRecord(const workflow::TouchRecord& record) {
    return record.id != -1;
}

bool IsPassing(const Gesture& gesture) {
    return gesture.to - gesture.from < JoiningSeconds && PixelsMoved(gesture.motion) < SlipPixels &&
           gesture.type != touch::GestureTap;
}

// Between the fingers that stay down; without one, between those that lift.
std::optional<dg::DPoint2D> MiddleOf(const workflow::TouchFrame& frame) {
    const bool stays = std::any_of(frame.records.begin(), frame.records.end(), [](const workflow::TouchRecord& record) {
        return HasRecord(record) && (record.flags & workflow::TouchUp) == 0;
    });
    dg::DPoint2D sum;
    int count = 0;
    for (const workflow::TouchRecord& record : frame.records) {
        if (HasRecord(record) && (!stays || (record.flags & workflow::TouchUp) == 0)) {
            sum = {sum.x + record.x, sum.y + record.y};
            ++count;
        }
    }
    return count > 0 ? std::optional(dg::DPoint2D{sum.x / count, sum.y / count}) : std::nullopt;
}

// Which gestures of a touch stand for themselves. At least one does.
std::vector<bool> FindStanding(const std::vector<Gesture>& gestures) {
    std::vector<bool> standing(gestures.size());
    std::transform(gestures.begin(), gestures.end(), standing.begin(),
                   [](const Gesture& gesture) { return !IsPassing(gesture); });
    if (std::find(standing.begin(), standing.end(), true) == standing.end()) {
        const auto most = std::max_element(gestures.begin(), gestures.end(),
                                           [](const Gesture& a, const Gesture& b) { return a.fingers < b.fingers; });
        standing[static_cast<std::size_t>(most - gestures.begin())] = true;
    }
    return standing;
}

// Gives the gesture that stands what happened in a passing one beside it.
void Adopt(Gesture& standing, Gesture& passing) {
    const bool isBefore = passing.firstFrame < standing.firstFrame;
    standing.from = std::min(standing.from, passing.from);
    standing.to = std::max(standing.to, passing.to);
    standing.firstFrame = std::min(standing.firstFrame, passing.firstFrame);
    standing.lastFrame = std::max(standing.lastFrame, passing.lastFrame);
    if (standing.name.empty()) {
        standing.name = std::move(passing.name);
    }
    standing.actions.insert(isBefore ? standing.actions.begin() : standing.actions.end(), passing.actions.begin(),
                            passing.actions.end());
    standing.effects.insert(isBefore ? standing.effects.begin() : standing.effects.end(), passing.effects.begin(),
                            passing.effects.end());
}

// Adds each passing gesture to a neighbour: a landing to the next one that stands, a lift to the one before.
std::vector<Gesture> Merge(std::vector<Gesture> gestures) {
    const std::vector<bool> standing = FindStanding(gestures);
    const auto last = std::find(standing.rbegin(), standing.rend(), true);
    const auto lastStanding = static_cast<std::size_t>(standing.rend() - last) - 1;
    std::vector<Gesture> merged;
    std::size_t waiting = 0;  // how many just before this one wait for the next one that stands
    for (std::size_t i = 0; i < gestures.size(); ++i) {
        if (standing[i]) {
            for (std::size_t back = 1; back <= waiting; ++back) {
                Adopt(gestures[i], gestures[i - back]);
            }
            waiting = 0;
            merged.push_back(std::move(gestures[i]));
            continue;
        }
        const bool rises = i + 1 < gestures.size() && gestures[i + 1].fingers > gestures[i].fingers;
        if (merged.empty() || waiting > 0 || (rises && i < lastStanding)) {
            ++waiting;
        } else {
            Adopt(merged.back(), gestures[i]);
        }
    }
    return merged;
}

}  // namespace

bool GestureTracker::BeginsTouch(const workflow::TouchFrame& frame) const {
    if (m_open.empty()) {
        return true;
    }
    // A single finger that lands begins anew, whatever was there before.
    const auto first = std::find_if(frame.records.begin(), frame.records.end(), HasRecord);
    return frame.count == 1 && first != frame.records.end() && (first->flags & workflow::TouchDown) != 0;
}

std::vector<Gesture> GestureTracker::Enter(const Observation& observation, const workflow::TouchFrame& frame,
                                           double time, const viewer::ViewSnapshot& before,
                                           const viewer::ViewSnapshot& after) {
    std::vector<Gesture> ended;
    if (BeginsTouch(frame)) {
        ended = EndTouch();
        if (std::none_of(frame.records.begin(), frame.records.end(), HasRecord)) {
            return ended;
        }
    } else {
        ++m_frame;
    }
    FollowFingers(frame);
    if (m_open.empty() || (m_open.back().gesture.fingers != frame.count && frame.count > 0)) {
        Gesture gesture;
        gesture.from = time;
        gesture.firstFrame = m_frame;
        gesture.fingers = frame.count;
        m_open.push_back({std::move(gesture), MotionMeter(before, MiddleOf(frame)), 1, 0, {}});
    }
    Open& open = m_open.back();
    open.meter.Step(after);
    open.gesture.to = time;
    open.gesture.lastFrame = m_frame;
    open.gesture.motion = open.meter.GetMotion();
    if (observation.gesture.value_or(touch::GestureNone) != touch::GestureNone) {
        open.gesture.type = *observation.gesture;
    }
    KeepMoment(open, time, after);
    return ended;
}

void GestureTracker::FollowFingers(const workflow::TouchFrame& frame) {
    m_allLifted = true;
    for (const workflow::TouchRecord& record : frame.records) {
        if (!HasRecord(record)) {
            continue;
        }
        const auto [known, isNew] = m_down.emplace(record.id, m_paths.size());
        if (isNew) {
            m_paths.push_back({record.id, static_cast<int>(m_paths.size()), {}, {}});
        }
        FingerPath& path = m_paths[known->second];
        if (path.points.empty() || path.points.back().x != record.x || path.points.back().y != record.y) {
            path.points.push_back({static_cast<std::uint32_t>(m_frame), record.x, record.y});
        }
        if ((record.flags & workflow::TouchUp) != 0) {
            path.liftedAt = m_frame;
            m_down.erase(known);
        } else {
            m_allLifted = false;
        }
    }
}

void GestureTracker::KeepMoment(Open& open, double time, const viewer::ViewSnapshot& view) {
    if (view.rubberBand && view.width > 0) {
        const viewer::RubberBand& band = *view.rubberBand;
        const double size = std::hypot(static_cast<double>(band.x1) - band.x0, static_cast<double>(band.y1) - band.y0);
        open.bandProgress = std::max(open.bandProgress, size / view.width);
    }
    if (!m_window.Holds(time)) {
        return;
    }
    open.latest = Moment{m_frame, time, view, open.gesture.motion, open.GetProgress(), ""};
    std::vector<Moment>& moments = open.gesture.moments;
    if ((m_frame - open.gesture.firstFrame) % open.stride != 0) {
        return;
    }
    moments.push_back(*open.latest);
    if (moments.size() == MostMoments) {
        for (std::size_t i = 1; i < MostMoments / 2; ++i) {
            moments[i] = std::move(moments[2 * i]);
        }
        moments.resize(MostMoments / 2);
        open.stride *= 2;
    }
}

void GestureTracker::AddEffect(const std::string& text, double time, const viewer::ViewSnapshot& view) {
    Open& open = m_open.back();
    open.gesture.actions.push_back(text);
    if (open.gesture.effects.size() < MostEffects && m_window.Holds(time)) {
        open.gesture.effects.push_back({m_frame, time, view, open.gesture.motion, open.GetProgress(), text});
    }
}

void GestureTracker::Rebase(const viewer::ViewSnapshot& view) {
    if (!m_open.empty()) {
        m_open.back().meter.Restart(view);
    }
}

std::vector<Gesture> GestureTracker::Leave(double time) {
    const bool silent = !m_open.empty() && time - m_open.back().gesture.to > SilenceSeconds;
    return m_allLifted || silent ? EndTouch() : std::vector<Gesture>{};
}

std::vector<Gesture> GestureTracker::EndTouch() {
    if (m_open.empty()) {
        return {};
    }
    const auto paths = std::make_shared<const std::vector<FingerPath>>(std::exchange(m_paths, {}));
    std::vector<Gesture> gestures;
    for (Open& open : m_open) {
        std::vector<Moment>& moments = open.gesture.moments;
        if (open.latest && (moments.empty() || moments.back().frame != open.latest->frame)) {
            moments.push_back(std::move(*open.latest));
        }
        open.gesture.paths = paths;
        gestures.push_back(std::move(open.gesture));
    }
    m_open.clear();
    m_down.clear();
    m_frame = 0;
    m_allLifted = false;
    return Merge(std::move(gestures));
}

}  // namespace replay
