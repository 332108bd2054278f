// Plays a transition over twice its duration, ever slower: it begins as fast as an even motion over the duration would
// be, and ends at rest. It copies what it plays, because the record's code goes with the plug-in.
#include "viewer/TransitionPlayer.h"

#include "host/dg/Conversion.h"
#include "host/dg/Functions.h"
#include "host/dg/Matrix.h"
#include "touch/navigation/CameraSpinTransition.h"

namespace viewer {
namespace {

struct AxisAngle {
    dg::DVec3 axis;
    double angle;  // radians in [0, pi]
};

// The rotation, as a row-vector matrix in the world, that turns the axes of one frame onto those of the other.
dg::DMat44 GetRotationBetween(const dg::FMat33& from, const dg::FMat33& to) {
    dg::DMat44 rotation;
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column) {
            double sum = 0;
            for (int axis = 0; axis < 3; ++axis) {
                sum += static_cast<double>(from.m[axis][row]) * static_cast<double>(to.m[axis][column]);
            }
            rotation.m[row][column] = sum;
        }
    }
    return rotation;
}

// Works through the unit quaternion whose largest component is found first, so that small angles and half turns both
// keep their axis.
AxisAngle GetAxisAngle(const dg::DMat44& rotation) {
    const double(&m)[4][4] = rotation.m;
    const double wx = m[1][2] - m[2][1];
    const double wy = m[2][0] - m[0][2];
    const double wz = m[0][1] - m[1][0];
    const double xy = m[0][1] + m[1][0];
    const double xz = m[0][2] + m[2][0];
    const double yz = m[1][2] + m[2][1];
    const double squares[4] = {1 + m[0][0] - m[1][1] - m[2][2], 1 - m[0][0] + m[1][1] - m[2][2],
                               1 - m[0][0] - m[1][1] + m[2][2], 1 + m[0][0] + m[1][1] + m[2][2]};
    int largest = 0;
    for (int i = 1; i < 4; ++i) {
        largest = squares[i] > squares[largest] ? i : largest;
    }
    // Each row is the quaternion (x, y, z, w) times four times the component that the row is for.
    const double multiples[4][4] = {
        {squares[0], xy, xz, wx}, {xy, squares[1], yz, wy}, {xz, yz, squares[2], wz}, {wx, wy, wz, squares[3]}};
    const double(&q)[4] = multiples[largest];
    const double sign = q[3] < 0 ? -1 : 1;
    const dg::DVec3 vector = dg::DVec3{q[0], q[1], q[2]} * sign;
    return {vector, 2 * dg::Atan2(vector.Norm(), q[3] * sign)};
}

// What the player takes over of a transition. The record itself is not kept, so that no object of a plug-in stays
// behind when the plug-in is unloaded.
struct QueuedTransition {
    AddTransitionCall call{};
    du::SmartPtr<ViewerShapeView> view;  // null when there is nothing to play
};

// The classes of the records live in the plug-in, which is not linked: a check of their type information at run time
// would need it.
__attribute__((no_sanitize("vptr"))) QueuedTransition ReadTransition(const animation::Transition& transition) {
    QueuedTransition queued;
    queued.call.values = {transition.startDelay, transition.duration, transition.kind, transition.reserved};
    queued.call.flag = transition.flag;
    if (transition.kind == animation::CameraSpinTransition::Kind) {
        const auto& spin = static_cast<const animation::CameraSpinTransition&>(transition);
        queued.call.start = spin.start;
        queued.call.end = spin.end;
        queued.call.center = spin.spinCenter;
        queued.view = dynamic_cast<ViewerShapeView*>(spin.view.Get());
    }
    return queued;
}

}  // namespace

dg::Location TurnAboutCenter(const SpinMotion& motion, double share) noexcept {
    const AxisAngle whole = GetAxisAngle(GetRotationBetween(motion.start.GetMat(), motion.end.GetMat()));
    const dg::DVec3 center(motion.center.x, motion.center.y, motion.center.z);
    const dg::DMat44 turn = dg::DMat44::Rotation(whole.axis, whole.angle * share);
    dg::Location location =
        motion.start * dg::DMat44(dg::DMat44(dg::DMat44::Translation(-center), turn), dg::DMat44::Translation(center));
    location.Sanitize();
    return location;
}

class TransitionPlayer::Queue final : public workflow::TransitionQueue {
public:
    explicit Queue(TransitionPlayer& player) noexcept : m_player(&player) {}
    void AddTransition(const du::SmartPtr<animation::Transition>& transition, std::int64_t context) override {
        if (m_player != nullptr && transition) {
            m_player->Take(*transition, context);
        }
    }
    void Disconnect() noexcept { m_player = nullptr; }

private:
    TransitionPlayer* m_player;
};

TransitionPlayer::TransitionPlayer(CallRecorder& recorder, bool play)
    : m_recorder(recorder), m_play(play), m_queue(new Queue(*this)) {}

TransitionPlayer::~TransitionPlayer() {
    m_queue->Disconnect();
}

void TransitionPlayer::GetQueue(du::SmartPtr<workflow::TransitionQueue>& queue) const {
    queue = m_queue;
}

void TransitionPlayer::Take(const animation::Transition& transition, std::int64_t context) {
    const QueuedTransition queued = ReadTransition(transition);
    if (m_recorder.IsEnabled()) {
        m_recorder.Add(queued.call);
    }
    if (context == GetContext()) {
        Play({queued.view, queued.call.start, queued.call.end, queued.call.center, queued.call.values[0],
              queued.call.values[1]});
    }
}

void TransitionPlayer::Play(const SpinMotion& motion) {
    const bool afterSeveralFingers =
        m_severalFingersAt &&
        dg::WrapSubtract(m_latestTick.value_or(0), *m_severalFingersAt) < NoCoastAfterSeveralFingersMs;
    if (m_play && motion.view && !afterSeveralFingers) {
        m_motion = motion;
        m_clockStart = m_latestTick;
    }
}

void TransitionPlayer::NoteTouch(int fingerCount) noexcept {
    if (fingerCount > 1) {
        m_severalFingersAt = m_latestTick.value_or(0);
    }
}

void TransitionPlayer::CameraWasSet(const hxk::ShapeView& view) noexcept {
    if (m_motion && m_motion->view.Get() == &view) {
        Stop();
    }
}

void TransitionPlayer::Advance(std::int64_t now) {
    m_latestTick = now;
    if (!m_motion) {
        return;
    }
    if (!m_clockStart) {
        m_clockStart = now;
    }
    const std::int64_t elapsed = dg::WrapSubtract(dg::WrapSubtract(now, *m_clockStart), m_motion->startDelay);
    if (elapsed < 0) {
        return;
    }
    // Of twice the duration, and as a double, which has room for that.
    const double time = static_cast<double>(elapsed) / (2.0 * static_cast<double>(m_motion->duration));
    if (m_motion->duration <= 0 || time >= 1) {
        m_motion->view->PlaceCamera(m_motion->end);
        Stop();
        return;
    }
    if (elapsed == 0) {
        m_motion->view->PlaceCamera(m_motion->start);
        return;
    }
    m_motion->view->PlaceCamera(TurnAboutCenter(*m_motion, time * (2 - time)));
}

}  // namespace viewer
