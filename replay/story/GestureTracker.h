// Divides the touch frames of a replay into gestures and measures what each did to the view.
//
// A touch lasts from the first finger's landing until no finger is left, or until the frames stop. A gesture lasts from
// the frame on which the recogniser starts, because the number of fingers changed, to the next such frame or the end of
// the touch. Fingers of a hand land and lift some milliseconds apart: a gesture that was short and did nothing is taken
// for the beginning or the end of the one beside it.
#pragma once

#include "replay/play/Observation.h"
#include "replay/story/ViewMotion.h"
#include "viewer/ViewSnapshot.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace replay {

// Where a finger was from one frame on, in view pixels. Frames are counted within the touch, from 0.
// A long touch has very many.
struct PathPoint {
    std::uint32_t frame = 0;
    std::int32_t x = 0;
    std::int32_t y = 0;
};

// Seconds; the limits count.
struct TimeWindow {
    double from = -std::numeric_limits<double>::infinity();
    double to = std::numeric_limits<double>::infinity();

    [[nodiscard]] bool Holds(double time) const { return time >= from && time <= to; }
};

struct FingerPath {
    std::int32_t id = 0;
    int number = 0;                 // of the finger within the touch, from 0
    std::vector<PathPoint> points;  // where it landed and wherever it moved; never empty
    std::optional<std::size_t> liftedAt;
};

// What the view showed at a time, and how it had moved since the gesture began.
struct Moment {
    std::size_t frame = 0;
    double time = 0;  // seconds
    viewer::ViewSnapshot view;
    Motion motion;
    double progress = 0;  // see MotionMeter; a selection band counts by its largest size, as a share of the view
    std::string effect;   // what happened just then, as "left click at (3, 4)"; empty for a step of a motion
};

inline constexpr std::size_t MostEffects = 4;  // that a gesture keeps the moments of

struct Gesture {
    double from = 0;  // seconds
    double to = 0;
    std::size_t firstFrame = 0;
    std::size_t lastFrame = 0;
    int fingers = 0;
    touch::GestureType type = touch::GestureNone;  // the last kind that was recognised
    Motion motion;
    std::string name;                                      // what it turned out to be, where the type does not tell
    std::vector<std::string> actions;                      // clicks and the like, in words
    std::vector<Moment> effects;                           // the moments of the first ones
    std::vector<Moment> moments;                           // the first frame, the last one and some between
    std::shared_ptr<const std::vector<FingerPath>> paths;  // of the whole touch
};

class GestureTracker {
public:
    // Moments outside the window are not kept.
    explicit GestureTracker(const TimeWindow& window) : m_window(window) {}

    // Takes in an event that is a touch frame, with the view before and after it. Answers the gestures of the touch
    // that ended because this frame begins another.
    std::vector<Gesture> Enter(const Observation& observation, const workflow::TouchFrame& frame, double time,
                               const viewer::ViewSnapshot& before, const viewer::ViewSnapshot& after);

    // The gesture under way; null between touches. Valid until the next Enter or Leave.
    [[nodiscard]] Gesture* GetOpen() noexcept { return m_open.empty() ? nullptr : &m_open.back().gesture; }

    // Adds what came of the gesture under way, with the view at that moment. There must be one.
    void AddEffect(const std::string& text, double time, const viewer::ViewSnapshot& view);

    // What happened to the view between two frames is not the gesture's doing: it is measured anew from here.
    void Rebase(const viewer::ViewSnapshot& view);

    // To be called after every event: answers the gestures of a touch that is over, because its last finger lifted or
    // because no frame has come for half a second.
    std::vector<Gesture> Leave(double time);

    // Ends the touch that is under way, if any, and answers its gestures.
    std::vector<Gesture> EndTouch();

private:
    struct Open {
        Gesture gesture;
        MotionMeter meter;
        std::size_t stride = 1;   // every how many frames a moment is kept
        double bandProgress = 0;  // the part of the progress that a selection band makes
        std::optional<Moment> latest;

        [[nodiscard]] double GetProgress() const { return meter.GetProgress() + bandProgress; }
    };

    bool BeginsTouch(const workflow::TouchFrame& frame) const;
    void FollowFingers(const workflow::TouchFrame& frame);
    void KeepMoment(Open& open, double time, const viewer::ViewSnapshot& view);

    TimeWindow m_window;
    std::vector<Open> m_open;  // the gestures of the touch under way; the last one is still going on
    std::vector<FingerPath> m_paths;
    std::unordered_map<std::int32_t, std::size_t> m_down;  // the paths of the fingers that have not lifted, by id
    std::size_t m_frame = 0;                               // the latest of the touch
    bool m_allLifted = false;
};

}  // namespace replay
