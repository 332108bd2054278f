// Gestures have few frames, because every fault is tried with every gesture. Harm shows in a spin on the host once it
// is sound again: it has to carry the camera about its centre as ever.
#include "tests/support/HostGestures.h"

#include "tests/support/Invariants.h"
#include "touch/Inspection.h"

#include <cmath>
#include <functional>

namespace tests {
namespace {

constexpr int MoveFrames = 6;
constexpr int TickMs = 16;
constexpr int HoldTickMs = 90;  // few frames; a hold fires within a window of 100 ms
constexpr int SilenceMs = 600;
constexpr int CoastTicks = 8;
// Model units: how far a spin carries the camera at least, and how near it stays to its way around the origin.
constexpr double SpinTravel = 1;
constexpr double SpinTolerance = 0.01;

using Places = std::function<std::vector<HostFinger>(int step)>;

void End(FaultyHost& host) {
    for (int i = 0; i < CoastTicks; ++i) {
        host.Tick();
    }
    host.Tick(SilenceMs);
}

void SendFrame(FaultyHost& host, std::vector<HostFinger> fingers, int flags, int milliseconds) {
    for (HostFinger& finger : fingers) {
        finger.flags = flags;
    }
    host.Touch(fingers);
    host.Tick(milliseconds);
}

// Down, some frames of movement, up, and the silence. The places are those of step 0 (down) to `frames` (up).
void Play(FaultyHost& host, const Places& places, int frames = MoveFrames, int milliseconds = TickMs) {
    SendFrame(host, places(0), Down, milliseconds);
    for (int step = 1; step <= frames; ++step) {
        SendFrame(host, places(step), Move, milliseconds);
    }
    SendFrame(host, places(frames), Up, milliseconds);
    End(host);
}

void PlayPan(FaultyHost& host) {
    Play(host, [](int step) -> std::vector<HostFinger> {
        return {{1, 300 + 25 * step, 300 + 10 * step, 0}, {2, 340 + 25 * step, 300 + 10 * step, 0}};
    });
}

void PlayTwist(FaultyHost& host) {
    Play(host, [](int step) -> std::vector<HostFinger> {
        const int x = static_cast<int>(std::lround(250 * std::cos(step * 0.15)));
        const int y = static_cast<int>(std::lround(250 * std::sin(step * 0.15)));
        return {{1, 500 - x, 300 - y, 0}, {2, 500 + x, 300 + y, 0}};
    });
}

void PlayTwoFingerTap(FaultyHost& host) {
    host.Touch({{1, 300, 300, Down}});
    host.Touch({{1, 300, 300, Move}, {2, 600, 300, Down}});
    host.Tick();
    host.Touch({{1, 300, 300, Move}, {2, 600, 300, Up}});
    host.Touch({{1, 300, 300, Move}});
    host.Tick();
    host.Touch({{1, 300, 300, Up}});
    End(host);
}

template <ViewKind Kind>
void Open(FaultyHost& host) {
    host.SetView(Kind);
}

void OpenPerspective(FaultyHost& host) {
    host.answers.MakePerspective();
    host.SetView(ViewKind::Shape);
}

void OpenExplore(FaultyHost& host) {
    host.answers.navMethod = du::Symbol("explore");
    OpenPerspective(host);
}

void OpenForSelection(FaultyHost& host) {
    PlayThreeFingerHold(host);
}

// How far one finger carries the camera about the origin; not a number when it leaves its way.
double MeasureSpin(FaultyHost& host) {
    const dg::DPoint3D before = host.answers.camera.GetLocation().GetPos();
    PlaySpin(host);
    const dg::DPoint3D after = host.answers.camera.GetLocation().GetPos();
    const double distance = (after - dg::DPoint3D::ORIGIN).Norm();
    return std::abs(distance - (before - dg::DPoint3D::ORIGIN).Norm()) <= SpinTolerance ? (after - before).Norm()
                                                                                        : std::nan("");
}

}  // namespace

std::string FindHarm(FaultyHost& host) {
    host.ClearHooks();
    host.answers = {};
    host.AnswerRequests();
    host.transition = nullptr;
    if (host.Component() == nullptr) {
        return FaultyHost::CountComponents() == 0 ? "" : "a dropped component lives on";
    }
    if (host.openUpdateGroups != 0) {
        return "an update group was left open, or closed twice";
    }
    const touch::WorkflowInspector state(*host.Component());
    if (std::string fault = FindStateFault(*host.Component()); !fault.empty()) {
        return fault;
    }
    host.SetManager(true);
    host.SetView(ViewKind::Shape);
    host.Mode(host.Component()->GetName().GetString().c_str(), "leave_markup_mode");
    host.Tick(SilenceMs);
    if (!state.GetNavigateMode()) {
        PlayThreeFingerHold(host);
        host.answers = {};
    }
    if (!(MeasureSpin(host) >= SpinTravel)) {
        return "a new touch does not spin the camera";
    }
    host.transition = nullptr;
    return host.Component()->GetReferenceCount() == 1 ? "" : "something still holds the component";
}

void PlaySpin(FaultyHost& host) {
    Play(host, [](int step) -> std::vector<HostFinger> { return {{1, 400 + 40 * step, 300, 0}}; });
}

void PlayPinch(FaultyHost& host) {
    Play(host, [](int step) -> std::vector<HostFinger> {
        return {{1, 400 - 25 * step, 300, 0}, {2, 600 + 25 * step, 300, 0}};
    });
}

void PlayTap(FaultyHost& host) {
    Play(
        host,
        [](int) -> std::vector<HostFinger> {
            return {{1, 400, 300, 0}};
        },
        1);
}

void PlayPressAndHold(FaultyHost& host) {
    Play(
        host,
        [](int) -> std::vector<HostFinger> {
            return {{1, 400, 300, 0}};
        },
        72);
}

void PlayThreeFingerHold(FaultyHost& host) {
    Play(
        host,
        [](int) -> std::vector<HostFinger> {
            return {{1, 300, 300, 0}, {2, 400, 300, 0}, {3, 500, 300, 0}};
        },
        36, HoldTickMs);
}

const std::vector<HostGesture>& AllHostGestures() {
    const HostSetup usual;
    const HostSetup twoHands{{"HXAPP_TOUCH_TWO_HANDS_EXPLORE"}};
    const HostSetup twoFingerTap{{"HXAPP_TWO_FINGER_TAP_TOUCH_MODE_CHANGE"}};
    static const std::vector<HostGesture> gestures = {
        {"spin", usual, Open<ViewKind::Shape>, PlaySpin, HostCall::AddTransition},
        {"look around", usual, OpenExplore, PlaySpin, HostCall::SetCameraLocation},
        {"pan", usual, Open<ViewKind::Shape>, PlayPan, HostCall::SetCameraLocation},
        {"pan in perspective", usual, OpenPerspective, PlayPan, HostCall::SetCameraLocation},
        {"pinch", usual, Open<ViewKind::Shape>, PlayPinch, HostCall::SetOrthographicWidth},
        {"pinch in perspective", usual, OpenPerspective, PlayPinch, HostCall::GetNavSpeed},
        {"twist", usual, Open<ViewKind::Shape>, PlayTwist, HostCall::SetCameraLocation},
        {"flight with one hand", usual, OpenExplore, PlayPinch, HostCall::GetNavSpeed},
        {"flight with two hands", twoHands, OpenExplore, PlayPinch, HostCall::GetNavSpeed},
        {"drag", usual, OpenForSelection, PlaySpin, HostCall::SendMessage},
        {"tap", usual, Open<ViewKind::Shape>, PlayTap, HostCall::SendModeMessage},
        {"two-finger tap", twoFingerTap, Open<ViewKind::Document>, PlayTwoFingerTap, HostCall::GetOrthoWidth},
        {"press and hold", usual, Open<ViewKind::Shape>, PlayPressAndHold, HostCall::SendMessage},
        {"three-finger hold", usual, Open<ViewKind::Shape>, PlayThreeFingerHold, HostCall::SetCameraLocation},
        {"pan of a page", usual, Open<ViewKind::Drawing>, PlaySpin, HostCall::SetPosition},
        {"pinch of a page", usual, Open<ViewKind::Image>, PlayPinch, HostCall::SetOrthoWidth},
    };
    return gestures;
}

}  // namespace tests
