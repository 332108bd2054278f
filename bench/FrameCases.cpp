#include "bench/FrameCases.h"

#include "host/workflow/Msg.h"

#include <array>
#include <cstddef>
#include <utility>

namespace bench {
namespace {

using Integers = workflow::TouchMsg::Integers;

constexpr int Down = 2;
constexpr int Move = 1;

struct Finger {
    int x;
    int y;
};

template <std::size_t... Index>
void CallHandler(workflow::SimpleWorkflow& workflow, const Integers& integers,
                 std::index_sequence<Index...> /*indices*/) {
    workflow.OnMsgTouch(integers[Index]...);
}

// One frame in which all the fingers have the same flags. Time stamps must differ from frame to frame only where a
// finger lifts, which none does here.
void Send(BenchHost& host, std::span<const Finger> fingers, int flags) {
    Integers integers{};
    integers[1] = static_cast<int>(fingers.size());
    for (std::size_t i = 0; i < 10; ++i) {
        int* record = &integers[2 + 5 * i];
        if (i >= fingers.size()) {
            record[0] = -1;
            continue;
        }
        record[0] = static_cast<int>(i);
        record[1] = fingers[i].x;
        record[2] = fingers[i].y;
        record[3] = 1000;
        record[4] = flags;
    }
    CallHandler(host.GetWorkflow(), integers, std::make_index_sequence<workflow::TouchMsg::IntegerCount>());
}

// To and fro, so that a case can run for ever; never twice the same position in a row.
int Swing(int step) {
    const int phase = step % 64;
    return phase < 32 ? phase : 64 - phase;
}

void OneFinger(BenchHost& host, int step) {
    const std::array<Finger, 1> fingers = {{{700 + 4 * Swing(step), 400 + 2 * Swing(step)}}};
    Send(host, fingers, Move);
}

void OneFingerDown(BenchHost& host, int /*step*/) {
    const std::array<Finger, 1> fingers = {{{640, 400}}};
    Send(host, fingers, Down);
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

void OpenPage(BenchHost& host) {
    host.OpenPage();
}

// A finger that rests before it has left its start moves nothing.
void SetUpRest(BenchHost& host) {
    OpenOrthographic(host);
    OneFingerDown(host, 0);
}

void RestingFinger(BenchHost& host, int /*step*/) {
    const std::array<Finger, 1> fingers = {{{645, 400}}};
    Send(host, fingers, Move);
}

// Two fingers one inch apart: too close for pinch and twist.
void TwoFingersPan(BenchHost& host, int step) {
    const std::array<Finger, 2> fingers = {{{500 + 4 * Swing(step), 400}, {596 + 4 * Swing(step), 420}}};
    Send(host, fingers, Move);
}

// Two fingers about the middle of the view, opened by up to twice 128 pixels.
void TwoFingersPinch(BenchHost& host, int step) {
    const int spread = 200 + 4 * Swing(step);
    const std::array<Finger, 2> fingers = {{{640 - spread, 380}, {640 + spread, 420}}};
    Send(host, fingers, Move);
}

// Two fingers whose line turns by up to half a radian.
void TwoFingersTwist(BenchHost& host, int step) {
    const std::array<Finger, 2> fingers = {{{440, 400 + 4 * Swing(step)}, {840, 400 - 4 * Swing(step)}}};
    Send(host, fingers, Move);
}

using Step = void(BenchHost& host, int step);

// Opens a view and brings a gesture to where its frames are steady: the finger or fingers go far enough to begin
// everything that the gesture can begin, and come back.
template <void Open(BenchHost&), Step Frame>
void Start(BenchHost& host) {
    Open(host);
    OneFingerDown(host, 0);
    Frame(host, 0);
    Frame(host, 31);
    Frame(host, 0);
}

// A three-finger hold would switch the mode, but takes ticks; a drag case needs multi-select mode only once, so the
// hold is told by its time stamps.
void SetUpDrag(BenchHost& host) {
    OpenOrthographic(host);
    Integers hold{};
    hold[1] = 3;
    for (std::size_t i = 0; i < 10; ++i) {
        int* record = &hold[2 + 5 * i];
        record[0] = i < 3 ? static_cast<int>(i) : -1;
        record[1] = 300 + 60 * static_cast<int>(i);
        record[2] = 300;
        record[3] = 1000;
        record[4] = Down;
    }
    constexpr auto indices = std::make_index_sequence<workflow::TouchMsg::IntegerCount>();
    CallHandler(host.GetWorkflow(), hold, indices);
    for (std::size_t i = 0; i < 3; ++i) {
        hold[5 + 5 * i] = 4050;
        hold[6 + 5 * i] = Move;
    }
    CallHandler(host.GetWorkflow(), hold, indices);
    host.GetWorkflow().OnMsgTimer(5000, 10);
    OneFingerDown(host, 0);
}

template <std::size_t Count>
void FirstFrame(BenchHost& host, int step) {
    std::array<Finger, Count> fingers{};
    for (std::size_t i = 0; i < Count; ++i) {
        fingers[i] = {300 + 70 * static_cast<int>(i), 300 + Swing(step)};
    }
    Send(host, fingers, Move);
}

constexpr FrameCase Cases[] = {
    {"FirstFrame/1", OpenOrthographic, nullptr, OneFingerDown, false, true},
    {"FirstFrame/2", OpenOrthographic, OneFingerDown, FirstFrame<2>, false, true},
    {"FirstFrame/5", OpenOrthographic, OneFingerDown, FirstFrame<5>, false, true},
    {"FirstFrame/10", OpenOrthographic, OneFingerDown, FirstFrame<10>, false, true},
    {"RestingFinger", SetUpRest, nullptr, RestingFinger, false, false},
    {"SpinStep", Start<OpenOrthographic, OneFinger>, nullptr, OneFinger, true, false},
    {"LookAroundStep", Start<OpenExplore, OneFinger>, nullptr, OneFinger, true, false},
    {"PanOrthographic", Start<OpenOrthographic, TwoFingersPan>, nullptr, TwoFingersPan, true, false},
    {"PanPerspective", Start<OpenPerspective, TwoFingersPan>, nullptr, TwoFingersPan, true, false},
    {"PinchOrthographic", Start<OpenOrthographic, TwoFingersPinch>, nullptr, TwoFingersPinch, true, false},
    {"PinchPerspective", Start<OpenPerspective, TwoFingersPinch>, nullptr, TwoFingersPinch, true, false},
    {"Twist", Start<OpenOrthographic, TwoFingersTwist>, nullptr, TwoFingersTwist, true, false},
    {"OneHandFlight", Start<OpenExplore, TwoFingersPinch>, nullptr, TwoFingersPinch, true, false},
    {"TwoHandsFlight", Start<OpenTwoHandsExplore, TwoFingersPinch>, nullptr, TwoFingersPinch, true, false},
    {"Drag", SetUpDrag, nullptr, OneFinger, true, false},
    {"Pan2D", Start<OpenPage, OneFinger>, nullptr, OneFinger, true, false},
    {"Pinch2D", Start<OpenPage, TwoFingersPinch>, nullptr, TwoFingersPinch, true, false},
};

}  // namespace

std::span<const FrameCase> GetFrameCases() {
    return Cases;
}

}  // namespace bench
