// Which gesture the fingers on a 3D view make.
#include "tests/support/FingerScript.h"
#include "tests/support/Matchers.h"
#include "viewer/ViewerViews.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace tests {
namespace {

constexpr double Pi = std::numbers::pi;

TEST(ShapeRecognizer, TheFirstFrameDecidesTheKindAndMeasuresTheCircle) {
    struct Row {
        const char* name;
        std::vector<Place> fingers;
        double span, angle;
        dg::DPoint2D center;
        int first, second;
    };
    const double diagonal = std::sqrt(20000.0);
    const Row rows[] = {{"one finger", {{5, 100, 200}}, 0, 0, {100, 200}, 5, 5},
                        {"two of one hand", {{1, 250, 200}, {2, 100, 200}}, 150, Pi, {175, 200}, 2, 1},
                        {"one above the other", {{1, 100, 300}, {2, 100, 200}}, 100, Pi / 2, {100, 250}, 1, 2},
                        {"falling to the right", {{1, 100, 300}, {2, 200, 200}}, diagonal, 0.75 * Pi, {150, 250}, 1, 2},
                        {"rising to the right", {{1, 100, 200}, {2, 200, 300}}, diagonal, 1.25 * Pi, {150, 250}, 1, 2},
                        {"a hand of three: its box, not its ends",
                         {{1, 100, 200}, {2, 150, 240}, {3, 130, 200}},
                         std::sqrt(4100.0),
                         Pi + std::atan2(40, 50),
                         {125, 220},
                         1,
                         2},
                        {"two hands: whole pixels for span and angle, halves for the centre",
                         {{1, 100, 200}, {2, 101, 200}, {3, 600, 200}},
                         500,
                         Pi,
                         {350.25, 200},
                         1,
                         3},
                        {"two on one pixel", {{1, 100, 200}, {2, 100, 200}}, 0, 0, {100, 200}, 1, 2}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        FingerScript s = FingerScript::OnShapeView();
        s.Down(row.fingers);
        EXPECT_EQ(s.Gesture(), row.span > 0 ? touch::GesturePanZoomRotate : touch::GestureSpin);
        EXPECT_EQ(s.State(), touch::GestureRecognized);
        EXPECT_DOUBLE_EQ(s.Inspect().GetGestureSpan(), row.span);
        EXPECT_DOUBLE_EQ(s.Inspect().GetLastGestureAngle(), row.angle);
        EXPECT_TRUE(AreNear(s.Inspect().GetGestureCenter(), row.center, 0));
        EXPECT_EQ(s.Inspect().GetFirstFingerId(), row.first);
        EXPECT_EQ(s.Inspect().GetSecondFingerId(), row.second);
    }
}

TEST(ShapeRecognizer, EveryChangeOfTheFingerCountStartsAnew) {
    FingerScript s = FingerScript::OnShapeView();
    s.Down(1, 400, 300).Tick().Move(1, 440, 300);
    s.Tick().Down(2, 600, 300).ExpectActions({"StopTransition", "SetCameraLocation", "StopTransition"});
    EXPECT_EQ(s.Gesture(), touch::GesturePanZoomRotate);
    EXPECT_EQ(s.Inspect().GetGestureSpan(), 160);
    s.Tick().Up(1);
    EXPECT_EQ(s.Gesture(), touch::GesturePanZoomRotate);
    EXPECT_EQ(s.Tick().Rest().Answer(), true);
    EXPECT_EQ(s.Gesture(), touch::GestureSpin);
    EXPECT_EQ(s.Inspect().GetFirstFingerId(), 2);
}

TEST(ShapeRecognizer, FingersThatCrossWhileTheCountStaysAreNotSortedAgain) {
    FingerScript s = FingerScript::OnShapeView();
    s.Down({{1, 300, 300}, {2, 600, 300}}).Move({{1, 600, 300}, {2, 300, 300}});
    EXPECT_EQ(s.Inspect().GetFirstFingerId(), 1);
    EXPECT_EQ(s.Inspect().GetLeftHand().front().id, 1);
    EXPECT_EQ(s.Inspect().GetGestureAngle(), 0.0) << "from finger 2, now left, to finger 1";
}

TEST(ShapeRecognizer, ASpanThatIsNoNumberLeavesTheGestureOpen) {
    FingerScript s = FingerScript::OnShapeView();
    s.Down(1, 400, 300).Tick(501).Mark();
    EXPECT_EQ(s.Frame({}, 2).Answer(), false);
    EXPECT_EQ(s.Gesture(), touch::GestureNone);
    EXPECT_EQ(s.State(), touch::GestureStarted);
    EXPECT_EQ(s.Inspect().GetFirstFingerId(), -1);
    EXPECT_TRUE(std::isnan(s.Inspect().GetGestureSpan()));
    s.ExpectNoActions();
    s.Frame({{2, 500, 300, 9, workflow::TouchDown}}, 1);
    EXPECT_EQ(s.Gesture(), touch::GestureSpin);
}

TEST(ShapeRecognizer, AnIdleFrameWithTheOldCountStartsButNotInMarkupMode) {
    for (const bool page : {false, true}) {
        for (const bool markup : {false, true}) {
            FingerScript s = FingerScript::OnShapeView(page ? PageView("drawingview") : OrthographicView());
            s.Down(1, 300, 200).Tick(501).Mode(markup ? "enter_markup_mode" : "leave_markup_mode").Frame({}, 0);
            EXPECT_EQ(s.State(), markup ? touch::GestureIdle : touch::GestureStarted) << page;
        }
    }
}

// The finger rested too long for a tap; the empty frame meets the latched spin once more.
TEST(ShapeRecognizer, AFrameWithoutFingersAfterALiftRunsTheLatchedProcessor) {
    FingerScript s = FingerScript::OnShapeView();
    s.Down(1, 400, 300).Tick(200).Up(1);
    EXPECT_EQ(s.Answer(), true);
    EXPECT_EQ(s.Frame({}, 0).Answer(), true);
    EXPECT_EQ(s.State(), touch::GestureEnded);
    s.ExpectActions({"StopTransition"});
}

TEST(ShapeRecognizer, ClosesTheViewsUpdateGroupOnEveryFrame) {
    FingerScript s = FingerScript::OnShapeView();
    const auto openGroups = [&] {
        return dynamic_cast<viewer::ViewerShapeView&>(*s.Component().GetView()).GetOpenUpdateGroups();
    };
    s.Down(1, 400, 300).Move(1, 440, 300).Down(2, 700, 300).Move(2, 800, 400).Up({1, 2}).Frame({}, 0);
    EXPECT_EQ(openGroups(), 0);
}

}  // namespace
}  // namespace tests
