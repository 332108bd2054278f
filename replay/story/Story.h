// What the touch did, in words: a line for each gesture and for everything else that a user would notice.
#pragma once

#include "replay/play/Observation.h"
#include "replay/story/GestureTracker.h"
#include "viewer/ViewSnapshot.h"
#include "viewer/ViewSpec.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace replay {

// One line.
struct StoryItem {
    double from = 0;  // seconds since the first tick
    double to = 0;
    std::string who;         // "2 fingers", "after release", "mouse", "host", "component"
    std::string what;        // "Spin", "Tap"; may be empty
    std::string text;        // "turned 74 degrees to the right"
    bool drawable = false;   // a touch, or a view that goes on moving
    bool isCut = false;      // its end is outside the window
    bool isGesture = false;  // something came of it: the view moved, a click was sent, ...
    int fingers = 0;

    // Of what is drawable; a story of very many gestures keeps the moments of those that did most.
    MotionWords words = MotionWords::Picture;  // for the moments' motion
    std::size_t firstFrame = 0;                // of the touch, from 0
    std::vector<Moment> moments;
    std::vector<Moment> effects;
    std::shared_ptr<const std::vector<FingerPath>> paths;  // may be null
};

// Whether one item matters more than another: the one that did more, and of those that did nothing the one with more
// fingers.
[[nodiscard]] bool MattersMore(const StoryItem& a, const StoryItem& b);

// Listens to a replay, event by event. Times are those of the host's ticks, or of the touch clock while there was none.
//
// A turn is given as the angle between the first and the last view of the gesture, in the direction in which the model
// was seen to go. When the way there was clearly longer, because the finger went to and fro or round a curve, the sum
// of all steps comes first and then how far from the beginning the model ends.
//
// A window leaves out what lies wholly outside it, and the pictures outside it. What reaches into it is described
// whole.
class Story {
public:
    // The view that is attached before the first event, as it was asked for and as it shows itself.
    Story(const std::optional<viewer::ViewSpec>& view, const viewer::ViewSnapshot& first,
          const TimeWindow& window = {});

    // Takes in an event and what the view shows after it.
    void Observe(const Observation& observation, const viewer::ViewSnapshot& after);
    // Ends what is still going on. To be called once, after the last event.
    void Finish();

    // After Finish, by the time at which they begin. The first and the last view are those of the window.
    [[nodiscard]] const std::vector<StoryItem>& GetItems() const noexcept { return m_items; }
    [[nodiscard]] const viewer::ViewSnapshot& GetFirstView() const noexcept { return m_first; }
    [[nodiscard]] const viewer::ViewSnapshot& GetLastView() const noexcept { return m_end; }
    [[nodiscard]] double GetStartTime() const noexcept { return m_startTime; }
    [[nodiscard]] double GetEndTime() const noexcept { return m_endTime; }
    [[nodiscard]] double GetLength() const noexcept { return m_now; }  // of the whole replay, seconds
    [[nodiscard]] bool IsWindow() const noexcept { return m_isWindow; }
    [[nodiscard]] std::size_t GetEventCount() const noexcept { return m_eventCount; }

private:
    // A spin that goes on after the finger has left.
    struct Coasting {
        double from = 0;
        double to = 0;
        double plannedDegrees = 0;
        bool moved = false;
        MotionMeter meter;
    };
    // Mouse messages that follow each other closely, by type: swallowed by the component, and passed on.
    struct MouseRun {
        double from = 0;
        double to = 0;
        std::map<std::string, int> swallowed;
        std::map<std::string, int> passed;
    };

    void AdvanceClock(const Event& event);
    void FollowWindow(const viewer::ViewSnapshot& after);
    void FollowTouch(const Observation& observation, const viewer::ViewSnapshot& after);
    void FollowCalls(const Observation& observation, const viewer::ViewSnapshot& after);
    void FollowCoasting(const Observation& observation, const viewer::ViewSnapshot& after);
    void FollowMouse(const Observation& observation);
    void FollowHost(const Observation& observation, const viewer::ViewSnapshot& after);
    void FollowModeAndStatus(const Observation& observation, const viewer::ViewSnapshot& after);
    void EndCoasting(const char* unmovedReason);
    void EndMouseRun();
    // Adds to the gesture under way; between touches it becomes a line of its own.
    void AddAction(const std::string& text, const viewer::ViewSnapshot& after);
    // Gives the picture of a mode switch its status bar, which is refreshed on a later event.
    void ShowSwitchedStatus(const std::string& text);
    // What the gesture under way turned out to be; nothing for an empty name.
    void NameGesture(const char* name);
    void AddLine(const char* who, std::string text);
    void AddGestures(std::vector<Gesture> gestures);
    void AddDrawable(StoryItem item);
    [[nodiscard]] StoryItem ItemOf(Gesture gesture) const;
    [[nodiscard]] MotionWords WordsFor(touch::GestureType type, const Motion& motion) const;

    TimeWindow m_window;
    bool m_isWindow = false;
    viewer::ViewSnapshot m_first;  // at the beginning of the window
    viewer::ViewSnapshot m_end;    // at its end
    viewer::ViewSnapshot m_last;   // at the latest event
    GestureTracker m_tracker;
    std::vector<StoryItem> m_items;
    std::optional<Coasting> m_coasting;
    std::optional<MouseRun> m_mouseRun;
    std::optional<std::int64_t> m_firstTick;
    std::optional<std::int32_t> m_firstTouchTime;
    std::string m_navMethod;
    bool m_navigate = true;
    double m_startTime = 0;
    double m_endTime = 0;
    double m_now = 0;
    std::size_t m_eventCount = 0;
    std::optional<double> m_switchedAt;  // until the status bar shows it
    std::vector<std::size_t> m_drawn;    // the items with moments so far
};

// As "2 fingers".
[[nodiscard]] std::string FingersText(int fingers);

// As "band of 357 x 210 px from (467, 511) px".
[[nodiscard]] std::string BandText(const viewer::RubberBand& band);

// As "0.42 s".
[[nodiscard]] std::string SecondsText(double seconds);

}  // namespace replay
