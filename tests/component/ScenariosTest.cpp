// Whole stories, as a person at the screen would tell them: the component from its plug-in, the viewer with its picker
// and selector around it, and a model to touch.
#include "scene/MachinePart.h"
#include "tests/support/FingerScript.h"
#include "tests/support/Matchers.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tests {
namespace {

using ::testing::IsEmpty;
using ::testing::Not;

// The machine part seen from above: the arrow lies in the middle of its cover, and the corners of the view are empty.
class Scenarios : public testing::Test {
protected:
    void SetUp() override { s.Viewer().SetModel(scene::MakeMachinePart()); }

    void Tap(int x, int y) { s.Down(1, x, y).Tick(80).Up(1); }
    void Spin() {
        s.Down(1, 300, 300);
        for (int x = 340; x <= 600; x += 40) {
            s.Tick().Move(1, x, 300);
        }
    }
    [[nodiscard]] Texts Selected() const { return s.View().selectedParts; }
    [[nodiscard]] bool IsMenuOpen() const { return s.View().contextMenu.has_value(); }

    FingerScript s = FingerScript::OnShapeView();
    // A pixel over the flange, which nothing covers from above.
    const dg::DPoint2D flange = s.PixelOf({1.7, 0, 0});
};

TEST_F(Scenarios, ATapSelectsThePartUnderTheFingerAndATapBesideItClearsTheSelection) {
    Tap(static_cast<int>(flange.x), static_cast<int>(flange.y));
    EXPECT_THAT(Selected(), testing::SizeIs(1));
    const dg::Location camera = s.CameraLocation();
    s.Tick(300);
    Tap(20, 20);
    EXPECT_THAT(Selected(), IsEmpty());
    EXPECT_EQ(s.CameraLocation(), camera) << "taps do not navigate";
}

TEST_F(Scenarios, TheSystemsEchoOfATapDoesNotClickASecondTime) {
    Tap(static_cast<int>(flange.x), static_cast<int>(flange.y));
    const Texts selected = Selected();
    EXPECT_EQ(s.AnswerTo("MsgMouseLeftDown"), "swallowed");
    EXPECT_EQ(s.AnswerTo("MsgClickLeft"), "swallowed") << "it would have cleared the selection";
    EXPECT_EQ(Selected(), selected);
    EXPECT_EQ(s.Tick(100).AnswerTo("MsgClickLeft"), "passed") << "a click of the mouse itself";
    EXPECT_THAT(Selected(), IsEmpty());
}

TEST_F(Scenarios, AHoldOpensTheContextActionsAndTheNextTouchClosesThem) {
    s.Down(1, static_cast<int>(flange.x), static_cast<int>(flange.y)).Hold(900);
    EXPECT_FALSE(IsMenuOpen());
    s.Hold(300);
    EXPECT_TRUE(IsMenuOpen());
    s.Up(1).Tick(300).Down(1, 20, 20);
    EXPECT_FALSE(IsMenuOpen());
}

TEST_F(Scenarios, ADragInMultiSelectModeDrawsABandAndSelectsWhatLiesInIt) {
    s.SwitchMode();
    const dg::Location camera = s.CameraLocation();
    s.Down(1, 100, 550).Tick().Move(1, 500, 300).Tick().Move(1, 950, 50);
    ASSERT_TRUE(s.View().rubberBand.has_value());
    EXPECT_EQ(s.View().rubberBand->x1, 950);
    EXPECT_THAT(s.StatusCalls(), Not(IsEmpty()));
    s.Up(1).Tick();
    EXPECT_FALSE(s.View().rubberBand.has_value());
    EXPECT_THAT(Selected(), testing::Contains("flange"));
    EXPECT_EQ(s.CameraLocation(), camera) << "selecting does not navigate";
}

TEST_F(Scenarios, AFlickCoastsOnUntilAFingerTakesHold) {
    Spin();
    s.Tick().Up(1);
    const dg::Location released = s.CameraLocation();
    s.Tick(10).Tick(40);
    EXPECT_FALSE(AreNear(s.CameraLocation(), released, 0.01)) << "the model turns on by itself";
    s.Down(1, 500, 300);
    const dg::Location held = s.CameraLocation();
    s.Tick(40).Tick(40);
    EXPECT_EQ(s.CameraLocation(), held);
}

TEST_F(Scenarios, AFlickStopsWhenItsComponentIsTakenAway) {
    Spin();
    s.Tick().Up(1);
    ASSERT_TRUE(s.Viewer().IsTransitionPlaying());
    s.Viewer().UnloadComponent();
    EXPECT_FALSE(s.Viewer().IsTransitionPlaying());
}

TEST_F(Scenarios, ASecondFingerTurnsASpinIntoAPanAndTheModelFollows) {
    Spin();
    s.Tick().Down(2, 650, 300).Tick();
    const dg::DPoint2D before = s.PixelOf({0, 0, 0});
    s.Move({{1, 620, 340}, {2, 690, 340}}).Tick();
    const dg::DPoint2D after = s.PixelOf({0, 0, 0});
    EXPECT_TRUE(AreNear(dg::DPoint2D(after.x - before.x, after.y - before.y), dg::DPoint2D(40, 40), 1e-3));
}

}  // namespace
}  // namespace tests
