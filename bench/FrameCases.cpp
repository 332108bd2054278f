// Fingers go to and fro, so that a case can run without end and each frame differs from the one before. Set-up takes a
// gesture past all its beginnings, so that steady frames are measured.
#include "bench/FrameCases.h"

#include "host/workflow/ConstStrings.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <utility>

namespace bench {
namespace {

using workflow::TouchDown;
using workflow::TouchMove;

struct Finger {
    int x;
    int y;
};

// One frame in which all the fingers have the same flags. Time stamps must differ from frame to frame only where a
// finger lifts, which none does here.
Frame MakeFrame(std::span<const Finger> fingers, int flags) {
    workflow::TouchFrame frame{static_cast<int>(fingers.size()), {}};
    for (std::size_t i = 0; i < fingers.size(); ++i) {
        frame.records.at(i) = {static_cast<int>(i), fingers[i].x, fingers[i].y, 1000, flags};
    }
    return workflow::TouchMsg(workflow::ConstStrings::MsgTouch, frame).GetIntegers();
}

// To and fro, so that a case can run for ever; never twice the same position in a row.
int Swing(int step) {
    const int phase = step % 64;
    return phase < 32 ? phase : 64 - phase;
}

Frame OneFinger(int step) {
    const std::array<Finger, 1> fingers = {{{700 + 4 * Swing(step), 400 + 2 * Swing(step)}}};
    return MakeFrame(fingers, TouchMove);
}

Frame OneFingerDown(int /*step*/) {
    const std::array<Finger, 1> fingers = {{{640, 400}}};
    return MakeFrame(fingers, TouchDown);
}

void OpenOrthographic(BenchHost& host) {
    host.OpenShapeView(true, "standard", nullptr);
}

void OpenPerspective(BenchHost& host) {
    host.OpenShapeView(false, "standard", nullptr);
}

void OpenExplore(BenchHost& host) {
    host.OpenShapeView(false, "explore", nullptr);
}

void OpenTwoHandsExplore(BenchHost& host) {
    host.OpenShapeView(false, "explore", "HXAPP_TOUCH_TWO_HANDS_EXPLORE");
}

void OpenFloor(BenchHost& host) {
    host.OpenFloor();
}

void OpenPage(BenchHost& host) {
    host.OpenPage();
}

// A finger that rests before it has left its start moves nothing.
void SetUpRest(BenchHost& host) {
    OpenOrthographic(host);
    Deliver(host, OneFingerDown(0));
}

Frame RestingFinger(int /*step*/) {
    const std::array<Finger, 1> fingers = {{{645, 400}}};
    return MakeFrame(fingers, TouchMove);
}

// Two fingers one inch apart: too close for pinch and twist.
Frame TwoFingersPan(int step) {
    const std::array<Finger, 2> fingers = {{{500 + 4 * Swing(step), 400}, {596 + 4 * Swing(step), 420}}};
    return MakeFrame(fingers, TouchMove);
}

// Two fingers about the middle of the view, opened by up to twice 128 pixels.
Frame TwoFingersPinch(int step) {
    const int spread = 200 + 4 * Swing(step);
    const std::array<Finger, 2> fingers = {{{640 - spread, 380}, {640 + spread, 420}}};
    return MakeFrame(fingers, TouchMove);
}

// Two fingers on a circle about the middle of the view: their line turns by up to half a radian, nothing else changes.
Frame TwoFingersTwist(int step) {
    const double angle = Swing(step) / 64.0;
    const int x = static_cast<int>(std::lround(200 * std::cos(angle)));
    const int y = static_cast<int>(std::lround(200 * std::sin(angle)));
    const std::array<Finger, 2> fingers = {{{640 - x, 400 - y}, {640 + x, 400 + y}}};
    return MakeFrame(fingers, TouchMove);
}

// The same with the circle wandering and growing: pan, pinch and twist in every frame.
Frame TwoFingersAll(int step) {
    const std::array<Finger, 2> fingers = {{{440, 400 + 5 * Swing(step)}, {840 + Swing(step), 400 - 5 * Swing(step)}}};
    return MakeFrame(fingers, TouchMove);
}

using Step = Frame(int step);

// Opens a view and brings a gesture to where its frames are steady: the finger or fingers go far enough to begin
// everything that the gesture can begin, and come back.
template <void Open(BenchHost&), Step Next>
void Start(BenchHost& host) {
    Open(host);
    Deliver(host, OneFingerDown(0));
    for (const int step : {0, 31, 0}) {
        Deliver(host, Next(step));
    }
}

// Drags need multi-select mode, and a three-finger hold switches to it. Its length comes from the time stamps of two
// frames, so that the set-up does not have to tick for three seconds.
void SetUpDrag(BenchHost& host) {
    OpenOrthographic(host);
    Frame hold{};
    hold[1] = 3;
    for (std::size_t i = 0; i < 10; ++i) {
        int* record = &hold[2 + 5 * i];
        record[0] = i < 3 ? static_cast<int>(i) : -1;
        record[1] = 300 + 60 * static_cast<int>(i);
        record[2] = 300;
        record[3] = 1000;
        record[4] = TouchDown;
    }
    Deliver(host, hold);
    for (std::size_t i = 0; i < 3; ++i) {
        hold[5 + 5 * i] = 4050;
        hold[6 + 5 * i] = TouchMove;
    }
    Deliver(host, hold);
    host.GetWorkflow().OnMsgTimer(5000, 10);
    Deliver(host, OneFingerDown(0));
}

template <std::size_t Count>
Frame FirstFrame(int step) {
    std::array<Finger, Count> fingers{};
    for (std::size_t i = 0; i < Count; ++i) {
        fingers[i] = {300 + 70 * static_cast<int>(i), 300 + Swing(step)};
    }
    return MakeFrame(fingers, TouchMove);
}

constexpr FrameCase Cases[] = {
    {"Floor", FrameKind::Floor, OpenFloor, nullptr, OneFinger},
    {"FirstFrame/1", FrameKind::First, OpenOrthographic, nullptr, OneFingerDown},
    {"FirstFrame/2", FrameKind::First, OpenOrthographic, OneFingerDown, FirstFrame<2>},
    {"FirstFrame/5", FrameKind::First, OpenOrthographic, OneFingerDown, FirstFrame<5>},
    {"FirstFrame/10", FrameKind::First, OpenOrthographic, OneFingerDown, FirstFrame<10>},
    {"RestingFinger", FrameKind::Resting, SetUpRest, nullptr, RestingFinger},
    {"SpinStep", FrameKind::Steady, Start<OpenOrthographic, OneFinger>, nullptr, OneFinger},
    {"LookAroundStep", FrameKind::Steady, Start<OpenExplore, OneFinger>, nullptr, OneFinger},
    {"PanOrthographic", FrameKind::Steady, Start<OpenOrthographic, TwoFingersPan>, nullptr, TwoFingersPan},
    {"PanPerspective", FrameKind::Steady, Start<OpenPerspective, TwoFingersPan>, nullptr, TwoFingersPan},
    {"PinchOrthographic", FrameKind::Steady, Start<OpenOrthographic, TwoFingersPinch>, nullptr, TwoFingersPinch},
    {"PinchPerspective", FrameKind::Steady, Start<OpenPerspective, TwoFingersPinch>, nullptr, TwoFingersPinch},
    {"TwistOrthographic", FrameKind::Steady, Start<OpenOrthographic, TwoFingersTwist>, nullptr, TwoFingersTwist},
    {"TwistPerspective", FrameKind::Steady, Start<OpenPerspective, TwoFingersTwist>, nullptr, TwoFingersTwist},
    {"PanPinchTwistOrthographic", FrameKind::Steady, Start<OpenOrthographic, TwoFingersAll>, nullptr, TwoFingersAll},
    {"PanPinchTwistPerspective", FrameKind::Steady, Start<OpenPerspective, TwoFingersAll>, nullptr, TwoFingersAll},
    {"OneHandFlight", FrameKind::Steady, Start<OpenExplore, TwoFingersPinch>, nullptr, TwoFingersPinch},
    {"TwoHandsFlight", FrameKind::Steady, Start<OpenTwoHandsExplore, TwoFingersPinch>, nullptr, TwoFingersPinch},
    {"Drag", FrameKind::Steady, SetUpDrag, nullptr, OneFinger},
    {"Pan2D", FrameKind::Steady, Start<OpenPage, OneFinger>, nullptr, OneFinger},
    {"Pinch2D", FrameKind::Steady, Start<OpenPage, TwoFingersPinch>, nullptr, TwoFingersPinch},
};

template <std::size_t... Index>
void CallHandler(workflow::SimpleWorkflow& workflow, const Frame& frame, std::index_sequence<Index...> /*indices*/) {
    workflow.OnMsgTouch(frame[Index]...);
}

}  // namespace

void Deliver(BenchHost& host, const Frame& frame) {
    CallHandler(host.GetWorkflow(), frame, std::make_index_sequence<workflow::TouchMsg::IntegerCount>());
}

std::span<const FrameCase> GetFrameCases() {
    return Cases;
}

}  // namespace bench
