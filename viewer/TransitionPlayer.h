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

// A camera's way from one location to another, turning about a centre. Times are host milliseconds, counted from the
// first tick after the motion was queued.
struct SpinMotion {
    du::SmartPtr<ViewerShapeView> view;
    dg::Location start;
    dg::Location end;
    dg::DPoint3D center;  // world
    std::int64_t startDelay = 0;
    std::int64_t duration = 0;  // 0 or less: over as soon as it starts
};

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
    // What a transition is to be queued with; one that comes with another value is recorded and not played.
    [[nodiscard]] static constexpr std::int64_t GetContext() noexcept { return 1; }

    void Play(const SpinMotion& motion);
    // Leaves the camera where it is.
    void Stop() noexcept { m_motion.reset(); }
    // Somebody else has set a view's camera: a motion of that view is over.
    void CameraWasSet(const hxk::ShapeView& view) noexcept;
    // A tick. The first one after queueing starts the clock; the first one at or past the end sets the end location
    // itself.
    void Advance(std::int64_t now);

    [[nodiscard]] bool IsPlaying() const noexcept { return m_motion.has_value(); }

private:
    class Queue;

    void Take(const animation::Transition& transition, std::int64_t context);

    CallRecorder& m_recorder;
    bool m_play;
    du::SmartPtr<Queue> m_queue;
    std::optional<SpinMotion> m_motion;
    std::optional<std::int64_t> m_clockStart;
};

}  // namespace viewer
