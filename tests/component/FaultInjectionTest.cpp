// A host that fails, and a component that must not: every fault of a host with every gesture. Nothing crashes, nothing
// is thrown to the host, the component stays consistent, and once the fault is gone a new touch works.
#include "tests/support/FaultyHost.h"
#include "tests/support/HostGestures.h"

#include <gtest/gtest.h>

#include <limits>
#include <new>
#include <ostream>
#include <stdexcept>

namespace tests {
namespace {

constexpr double NaN = std::numeric_limits<double>::quiet_NaN();
constexpr double Infinity = std::numeric_limits<double>::infinity();
constexpr float FloatNaN = std::numeric_limits<float>::quiet_NaN();

void ChangeWindow(FaultyHost& host, double width, double height, double viewPlane) {
    double left = 0, right = 0, bottom = 0, top = 0, earlier = 0;
    bool orthographic = false;
    dg::Camera3D& camera = host.answers.camera;
    camera.GetProjection(left, right, bottom, top, earlier, orthographic);
    camera.SetProjection(-width / 2, width / 2, -height / 2, height / 2, viewPlane, orthographic);
}

void ChangeAxes(FaultyHost& host, float value) {
    const dg::FVec3 axis{value, value, value};
    host.answers.camera.SetLocation({axis, axis, axis, {0, 0, 20}});
    host.answers.pageLocation = host.answers.camera.GetLocation();
}

void MovePositions(FaultyHost& host, double value) {
    dg::Location location;
    location.SetPos({value, value, value});
    host.answers.camera.SetLocation(location);
    host.answers.pageLocation = location;
}

struct Fault {
    const char* name;
    void (*set)(FaultyHost& host);
    int pixelsPerInch = 96;

    friend void PrintTo(const Fault& fault, std::ostream* out) { *out << fault.name; }
};

const Fault Faults[] = {
    {"NoManager", [](FaultyHost& host) { host.SetManager(false); }},
    {"NoView", [](FaultyHost& host) { host.SetView(ViewKind::None); }},
    {"ViewOfUnknownKind", [](FaultyHost& host) { host.SetView(ViewKind::Other); }},
    {"ViewOfFalseKind", [](FaultyHost& host) { host.SetView(ViewKind::FalseShape); }},
    {"NoScene", [](FaultyHost& host) { host.answers.hasScene = false; }},
    {"NoPreferences",
     [](FaultyHost& host) {
         host.answers.hasPreferences = false;
         host.SetView(ViewKind::Shape);
     }},
    {"PreferencesWithoutTheKey",
     [](FaultyHost& host) {
         host.answers.hasPreferenceKey = false;
         host.UpdatePreferences();
     }},
    {"RequestRefused", [](FaultyHost& host) { host.answers.acceptsRequests = false; }},
    {"BoxFailed", [](FaultyHost& host) { host.answers.boxStatus = -1; }},
    {"BoxNever", [](FaultyHost& host) { host.answers.boxTime = BoxTime::Never; }},
    {"BoxBeforeManageObjectReturns", [](FaultyHost& host) { host.answers.boxTime = BoxTime::WhileManaging; }},
    {"BoxBeforeGetBoundingBoxReturns", [](FaultyHost& host) { host.answers.boxTime = BoxTime::WhileAsking; }},
    {"BoxTwice", [](FaultyHost& host) { host.answers.boxRepeats = 2; }},
    {"BoxAfterCancelAndAgain",
     [](FaultyHost& host) {
         host.answers.boxTime = BoxTime::Never;
         host.answers.boxRepeats = 2;
         host.answers.answersCancelled = true;
         host.On(
             HostCall::RequestCancelled, [&host] { host.AnswerRequests(); }, FaultyHost::Always);
     }},
    {"BoxEmpty", [](FaultyHost& host) { host.answers.box = dg::DBox::EMPTY; }},
    {"BoxOfOnePoint",
     [](FaultyHost& host) {
         host.answers.box = {{0, 0, 20}, {0, 0, 20}};
     }},
    {"BoxNotANumber",
     [](FaultyHost& host) {
         host.answers.box = {{NaN, NaN, NaN}, {NaN, NaN, NaN}};
     }},
    {"BoxInfinite",
     [](FaultyHost& host) {
         host.answers.box = {{-Infinity, -Infinity, -Infinity}, {Infinity, Infinity, Infinity}};
     }},
    {"NoTransitionQueue", [](FaultyHost& host) { host.answers.hasTransitionQueue = false; }},
    {"NoStatusSlot", [](FaultyHost& host) { host.answers.storesStatus = false; }},
    {"NoTexts", [](FaultyHost& host) { host.answers.hasTexts = false; }},
    {"NoTraceChannel",
     [](FaultyHost& host) {
         host.answers.takesTraces = false;
         host.answers.acceptsRequests = false;
     }},
    {"SendsNotDelivered", [](FaultyHost& host) { host.answers.delivers = false; }},
    {"ViewportOfNoSize",
     [](FaultyHost& host) {
         host.answers.camera.SetViewport(0, 0);
         host.answers.pageWidth = 0;
         host.answers.pageHeight = 0;
     }},
    {"ViewportOfOnePixel",
     [](FaultyHost& host) {
         host.answers.camera.SetViewport(1, 1);
         host.answers.pageWidth = 1;
         host.answers.pageHeight = 1;
     }},
    {"ViewportOfTheLargestSize",
     [](FaultyHost& host) {
         host.answers.camera.SetViewport(UINT32_MAX, UINT32_MAX);
         host.answers.pageWidth = UINT32_MAX;
         host.answers.pageHeight = UINT32_MAX;
     }},
    {"WindowOfNoSize",
     [](FaultyHost& host) {
         ChangeWindow(host, 0, 0, -1);
         host.answers.orthoWidth = 0;
     }},
    {"WindowNotANumber",
     [](FaultyHost& host) {
         ChangeWindow(host, NaN, NaN, NaN);
         host.answers.orthoWidth = NaN;
     }},
    {"WindowInfinite",
     [](FaultyHost& host) {
         ChangeWindow(host, Infinity, Infinity, Infinity);
         host.answers.orthoWidth = Infinity;
     }},
    {"WindowMirrored",
     [](FaultyHost& host) {
         ChangeWindow(host, -20, -12, 1);
         host.answers.orthoWidth = -20;
     }},
    {"ViewPlaneAtTheEye", [](FaultyHost& host) { ChangeWindow(host, 1, 0.6, 0); }},
    {"AxesNotANumber", [](FaultyHost& host) { ChangeAxes(host, FloatNaN); }},
    {"AxesZero", [](FaultyHost& host) { ChangeAxes(host, 0); }},
    {"PositionNotANumber", [](FaultyHost& host) { MovePositions(host, NaN); }},
    {"PositionInfinite", [](FaultyHost& host) { MovePositions(host, Infinity); }},
    {"SpinCenterNotANumber",
     [](FaultyHost& host) {
         host.answers.spinCenter = {NaN, NaN, NaN};
     }},
    {"SpinCenterInfinite",
     [](FaultyHost& host) {
         host.answers.spinCenter = {Infinity, 0, 0};
     }},
    {"NavMethodEmpty", [](FaultyHost& host) { host.answers.navMethod = du::Symbol(nullptr); }},
    {"NavSpeedZero", [](FaultyHost& host) { host.answers.navSpeed = 0; }},
    {"NavSpeedNegative", [](FaultyHost& host) { host.answers.navSpeed = -1; }},
    {"NavSpeedNotANumber", [](FaultyHost& host) { host.answers.navSpeed = NaN; }},
    {"NavSpeedInfinite", [](FaultyHost& host) { host.answers.navSpeed = Infinity; }},
    {"SettersIgnore", [](FaultyHost& host) { host.answers.setters = Setters::Ignore; }},
    {"SettersClamp", [](FaultyHost& host) { host.answers.setters = Setters::Clamp; }},
    {"DisplayWithoutResolution", [](FaultyHost&) {}, 0},
    {"DisplayWithNegativeResolution", [](FaultyHost&) {}, -96},
    {"DisplayWithLowestResolution", [](FaultyHost&) {}, std::numeric_limits<int>::min()},
};

class FaultyAnswers : public testing::TestWithParam<Fault> {};

TEST_P(FaultyAnswers, DoNotHarmAnyGestureAndLeaveNothingBehind) {
    for (const HostGesture& gesture : AllHostGestures()) {
        SCOPED_TRACE(gesture.name);
        HostSetup setup = gesture.setup;
        setup.ppiX = GetParam().pixelsPerInch;
        setup.ppiY = GetParam().pixelsPerInch;
        FaultyHost host(setup);
        gesture.prepare(host);
        GetParam().set(host);
        gesture.play(host);
        host.AnswerRequests();
        gesture.play(host);
        EXPECT_EQ(FindHarm(host), "");
    }
    EXPECT_EQ(FaultyHost::CountComponents(), 0);
}

INSTANTIATE_TEST_SUITE_P(Host, FaultyAnswers, testing::ValuesIn(Faults),
                         [](const auto& row) { return row.param.name; });

// An operation that throws, whatever it throws, at each of its calls or once in the middle of a gesture.
class ThrowingCalls : public testing::TestWithParam<HostCall> {};

TEST_P(ThrowingCalls, EndInTheComponent) {
    const FaultyHost::Hook throws[] = {[] { throw std::bad_alloc(); }, [] { throw std::runtime_error("host"); },
                                       [] { throw 1; }};
    int calls = 0;
    for (const HostGesture& gesture : AllHostGestures()) {
        SCOPED_TRACE(gesture.name);
        int kind = 0;
        for (const int times : {FaultyHost::Always, 1, 3}) {
            FaultyHost host(gesture.setup);
            gesture.prepare(host);
            host.answers.acceptsRequests = times == 1;
            host.answers.boxTime = GetParam() == HostCall::RequestCancelled ? BoxTime::Never : BoxTime::NextTick;
            const int before = host.CountOf(GetParam());
            host.On(GetParam(), throws[kind++], times);
            gesture.play(host);
            host.UpdatePreferences();
            host.UpdateStatusBar();
            host.SetView(ViewKind::Shape);
            calls += host.CountOf(GetParam()) - before;
            EXPECT_EQ(FindHarm(host), "");
        }
    }
    EXPECT_GT(calls, 0);
    EXPECT_EQ(FaultyHost::CountComponents(), 0);
}

// All but what is asked only while a component is made, and a destructor, which may not throw.
std::vector<HostCall> GestureCalls() {
    std::vector<HostCall> calls;
    for (std::size_t i = 0; i < HostCallCount; ++i) {
        if (static_cast<HostCall>(i) != HostCall::IsPresent && static_cast<HostCall>(i) != HostCall::ViewGoes) {
            calls.push_back(static_cast<HostCall>(i));
        }
    }
    return calls;
}

INSTANTIATE_TEST_SUITE_P(Host, ThrowingCalls, testing::ValuesIn(GestureCalls()),
                         [](const auto& row) { return NameOf(row.param); });

TEST(HostGestures, ReachASoundHostAndEndWithoutATrace) {
    for (const HostGesture& gesture : AllHostGestures()) {
        SCOPED_TRACE(gesture.name);
        FaultyHost host(gesture.setup);
        gesture.prepare(host);
        const int before = host.CountOf(gesture.reaches);
        gesture.play(host);
        EXPECT_GT(host.CountOf(gesture.reaches), before);
        EXPECT_EQ(host.openUpdateGroups, 0);
        EXPECT_EQ(host.CountWaitingRequests(), 0U);
        host.transition = nullptr;
        EXPECT_EQ(host.Component()->GetReferenceCount(), 1);
        host.Drop();
        EXPECT_EQ(FaultyHost::CountComponents(), 0);
    }
}

}  // namespace
}  // namespace tests
