// When a pinch and a twist begin. 96 pixels are an inch.
#include "tests/support/FingerScript.h"

#include <gtest/gtest.h>

#include <vector>

namespace tests {
namespace {

// Fingers 1, 2, ... side by side.
std::vector<Place> InRow(const std::vector<int>& columns) {
    std::vector<Place> places;
    for (const int x : columns) {
        places.push_back({static_cast<int>(places.size()) + 1, x, 300});
    }
    return places;
}

struct OnsetRow {
    const char* name;
    std::vector<Place> from;
    std::vector<Place> to;
    bool pinch, twist;
};

const OnsetRow OnsetRows[] = {
    {"in, ratio exactly 1.15", InRow({100, 445}), InRow({100, 400}), false, false},
    {"in, ratio just above 1.15", InRow({100, 445}), InRow({100, 399}), true, false},
    {"out, ratio exactly 0.85", InRow({100, 440}), InRow({100, 500}), false, false},
    {"out, ratio just below 0.85", InRow({100, 440}), InRow({100, 501}), true, false},
    {"two fingers at 1.5 inches", InRow({100, 210}), InRow({100, 244}), false, false},
    {"two fingers beyond 1.5 inches", InRow({100, 210}), InRow({100, 245}), true, false},
    {"two fingers turning at 1.5 inches", {{1, 100, 300}, {2, 244, 300}}, {{1, 100, 300}, {2, 100, 444}}, false, false},
    {"twist of 0.2481", {{1, 100, 300}, {2, 400, 300}}, {{1, 100, 300}, {2, 400, 376}}, false, false},
    {"twist of 0.2512", {{1, 100, 300}, {2, 400, 300}}, {{1, 100, 300}, {2, 400, 377}}, false, true},
    {"twist of -0.2512", {{1, 100, 300}, {2, 400, 300}}, {{1, 100, 300}, {2, 400, 223}}, false, true},
    {"pinch and twist at once", {{1, 100, 300}, {2, 400, 300}}, {{1, 100, 300}, {2, 600, 500}}, true, true},
    {"three with gaps of 2 inches", InRow({100, 200, 300}), InRow({100, 292, 484}), false, false},
    {"three, right gap beyond 2 inches", InRow({100, 200, 300}), InRow({100, 292, 485}), true, false},
    {"three, left gap beyond 2 inches", InRow({100, 200, 300}), InRow({100, 293, 485}), true, false},
    {"four with gaps of 2 inches", InRow({50, 150, 250, 350}), InRow({50, 242, 434, 626}), false, false},
    {"four, last gap beyond 2 inches", InRow({50, 150, 250, 350}), InRow({50, 242, 434, 627}), true, false},
    {"five have no gate", InRow({100, 120, 140, 160, 180}), InRow({100, 120, 140, 160, 200}), true, false},
    {"five on one pixel: an infinite ratio", InRow({100, 120, 140, 160, 180}), InRow({100, 100, 100, 100, 100}), true,
     true},
};

TEST(GestureCircle, PinchAndTwistBeginBeyondTheirLimits) {
    for (const OnsetRow& row : OnsetRows) {
        SCOPED_TRACE(row.name);
        FingerScript s = FingerScript::OnShapeView();
        s.Down(row.from).Tick().Move(row.to);
        const touch::WorkflowInspector state = s.Inspect();
        EXPECT_EQ(state.IsZoomStarted(), row.pinch) << state.GetGestureSpan();
        EXPECT_EQ(state.IsRotationStarted(), row.twist) << state.GetGestureAngle();
        EXPECT_EQ(s.Calls<viewer::GetBoundingBoxCall>().size(), row.pinch ? 1U : 0U);
        if (row.pinch) {
            EXPECT_EQ(state.GetStartGestureSpan(), state.GetGestureSpan());
            EXPECT_EQ(state.GetLastZoomSpan(), state.GetGestureSpan());
        }
        if (row.twist) {
            EXPECT_EQ(state.GetLastGestureAngle(), state.GetGestureAngle());
        }
    }
}

TEST(GestureCircle, TheGateMeasuresEachAxisInItsOwnInches) {
    viewer::HostSettings tall;
    tall.ppiY = 192;
    for (const int height : {288, 289}) {
        FingerScript s = FingerScript::OnShapeView(OrthographicView(), tall);
        s.Down({{1, 300, 100}, {2, 300, 200}}).Move({{1, 300, 100}, {2, 300, 100 + height}});
        EXPECT_EQ(s.Inspect().IsZoomStarted(), height > 288) << height;
    }
}

TEST(GestureCircle, OnsetsAreMeasuredFromTheStartAndRequestBoundsOnce) {
    FingerScript s = FingerScript::OnShapeView();
    s.Down({{1, 100, 300}, {2, 400, 300}});
    for (const int x : {380, 362}) {
        s.Move({{1, 100, 300}, {2, x, 300}});
        EXPECT_FALSE(s.Inspect().IsZoomStarted()) << x;
        EXPECT_EQ(s.Inspect().GetStartGestureSpan(), 300);
    }
    s.Mark().Move({{1, 100, 300}, {2, 358, 300}});
    EXPECT_EQ(s.Inspect().GetStartGestureSpan(), 258);
    EXPECT_EQ(s.Inspect().GetLastZoomSpan(), 258);
    EXPECT_EQ(s.Calls<viewer::SetWidthCall>().at(0).width, 20) << "the zoom starts from no change";

    s.Mark().Move({{1, 100, 300}, {2, 400, 300}}).Move({{1, 100, 300}, {2, 600, 300}});
    EXPECT_TRUE(s.Inspect().IsZoomStarted());
    EXPECT_TRUE(s.Calls<viewer::GetBoundingBoxCall>().empty());
}

TEST(GestureCircle, OnsetsLastUntilTheTouchEnds) {
    FingerScript s = FingerScript::OnShapeView();
    s.Down({{1, 100, 300}, {2, 400, 300}}).Move({{1, 100, 300}, {2, 600, 500}}).Move({{1, 100, 300}, {2, 400, 300}});
    EXPECT_TRUE(s.Inspect().IsZoomStarted() && s.Inspect().IsRotationStarted());
    s.Down(3, 700, 300).Rest().Up(3).Rest();
    EXPECT_TRUE(s.Inspect().IsZoomStarted() && s.Inspect().IsRotationStarted());
    s.Up({1, 2}).Wait(600).Down({{1, 100, 300}, {2, 400, 300}}).Rest();
    EXPECT_FALSE(s.Inspect().IsZoomStarted() || s.Inspect().IsRotationStarted());
}

// The list was built from two fingers; the frame claims three, with one of them unknown.
TEST(GestureCircle, ACountWithoutItsFingersHasNoGate) {
    FingerScript s = FingerScript::OnShapeView();
    s.Frame({{1, 100, 300, 10, 2}, {2, 200, 300, 10, 2}}, 3);
    s.Frame({{1, 100, 300, 20, 1}, {2, 240, 300, 20, 1}}, 3);
    EXPECT_TRUE(s.Inspect().IsZoomStarted());
}

}  // namespace
}  // namespace tests
