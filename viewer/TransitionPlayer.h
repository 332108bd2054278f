// Plays the camera transitions that the component queues.
#pragma once

#include "host/dg/Location.h"
#include "host/dg/Point.h"
#include "host/du/SmartPtr.h"
#include "host/workflow/WorkflowManagerCore.h"
#include "viewer/CallRecorder.h"
#include "viewer/ViewerViews.h"

#include <cstdint>
#include <optional>

namespace viewer {

// A camera's way from one location to another, turning about a centre: fast at first, ever slower, at rest at the end.
// Times are host milliseconds, counted from the latest tick before the motion was queued.
struct SpinMotion {
    du::SmartPtr<ViewerShapeView> view;
    dg::Location start;
    dg::Location end;
    dg::DPoint3D center;  // world
    std::int64_t startDelay = 0;
    // Half of what the whole way takes, so that it begins at the speed of an even motion of this duration; 0 or less:
    // over as soon as it starts.
    std::int64_t duration = 0;
};

// After frames with several fingers a camera does not coast for this many host milliseconds, itself no longer one of
// them: the finger of a pan that lifts last must not throw the model.
inline constexpr std::int64_t NoCoastAfterSeveralFingersMs = 100;

// The location a share of the way from start to end, 0 to 1: turned about the centre by that share of the shortest
// rotation between the two frames.
[[nodiscard]] dg::Location TurnAboutCenter(const SpinMotion& motion, double share) noexcept;

// Moves one camera at a time. A motion that is queued replaces the one that plays.
class TransitionPlayer {
public:
    // With `play` switched off transitions are taken and recorded, and nothing moves.
    TransitionPlayer(CallRecorder& recorder, bool play);
    ~TransitionPlayer();
    TransitionPlayer(const TransitionPlayer&) = delete;
    TransitionPlayer& operator=(const TransitionPlayer&) = delete;

    // What a component is given to queue with. A queue that outlives the player takes transitions to nowhere.
    void GetQueue(du::SmartPtr<workflow::TransitionQueue>& queue) const;
    // The context that a transition must be queued with; one that comes with another value is recorded and not played.
    [[nodiscard]] static constexpr std::int64_t GetContext() noexcept { return 1; }

    // Queues a motion. Nothing happens when playing is switched off, or soon after a frame with several fingers.
    void Play(const SpinMotion& motion);
    // A touch frame comes in, before anybody sees it.
    void NoteTouch(int fingerCount) noexcept;
    // Leaves the camera where it is.
    void Stop() noexcept { m_motion.reset(); }
    // Somebody else has set a view's camera: a motion of that view is over.
    void CameraWasSet(const hxk::ShapeView& view) noexcept;
    // A tick. It starts the clock of a motion that was queued before any other; the first one at or past the end sets
    // the end location itself.
    void Advance(std::int64_t now);

    [[nodiscard]] bool IsPlaying() const noexcept { return m_motion.has_value(); }

private:
    class Queue;

    void Take(const animation::Transition& transition, std::int64_t context);

    CallRecorder& m_recorder;
    bool m_play;
    du::SmartPtr<Queue> m_queue;
    std::optional<SpinMotion> m_motion;
    std::optional<std::int64_t> m_clockStart;  // of the motion
    std::optional<std::int64_t> m_latestTick;
    std::optional<std::int64_t> m_severalFingersAt;  // the latest tick when a frame had more than one finger
};

}  // namespace viewer
