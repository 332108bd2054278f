// Taps: short still touches become clicks, and two fingers switch the mode.
#include "tests/support/FingerScript.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tests {
namespace {

constexpr char TwoFingerSwitch[] = "HXAPP_TWO_FINGER_TAP_TOUCH_MODE_CHANGE";

TEST(Taps, AClickIsAShortTouchThatStaysNearItsStart) {
    const struct {
        const char* name;
        int duration, x, y;  // of the lift; the finger came down at (400, 300)
        bool clicks;
    } rows[] = {{"149 ms", 149, 400, 300, true},
                {"150 ms", 150, 400, 300, false},
                {"30 pixels on both axes", 100, 430, 270, true},
                {"31 pixels sideways", 100, 431, 300, false},
                {"31 pixels down", 100, 400, 269, false},
                {"no position in the lift", 100, 0, 0, true}};
    for (const char* kind : {"shapeview", "drawingview", "schematicfigureview"}) {
        for (const auto& row : rows) {
            SCOPED_TRACE(std::string(row.name) + ", " + kind);
            viewer::ViewSpec view = PageView(kind);
            view.camera = OrthographicView().camera;
            FingerScript s = FingerScript::OnShapeView(view);
            s.Down(1, 400, 300).Tick(row.duration).Mark();
            s.Frame({{1, row.x, row.y, s.TouchTime(), workflow::TouchUp}}, 1);
            EXPECT_EQ(s.Answer(), true);
            const std::string at = std::to_string(row.x) + " " + std::to_string(row.y);
            s.ExpectActions(row.clicks ? Texts{"MsgClickLeft " + at + " passed"} : Texts{});
            EXPECT_EQ(s.Gesture() == touch::GestureTap, row.clicks);
            EXPECT_EQ(s.State(), touch::GestureEnded);
        }
    }
}

TEST(Taps, ATouchWithoutAStartTimeDoesNotClick) {
    FingerScript s = FingerScript::OnShapeView();
    s.Frame({{1, 400, 300, 0, workflow::TouchDown}}, 1).Frame({{1, 400, 300, 100, workflow::TouchUp}}, 1);
    s.ExpectMessages({});
}

// The second finger comes `late` ms after the first one, which rises after another `first` ms; the second one rises
// `second` ms later.
FingerScript& TwoFingerTap(FingerScript& s, int late, int first, int second) {
    s.Down(1, 300, 300).Tick(late).Down(2, 400, 300);
    return s.Tick(first).Up(1).Tick(second).Rest().Mark().Up(2);
}

TEST(Taps, TwoFingersSwitchTheModeWhereTheyAreShortAndStill) {
    const struct {
        const char* name;
        const char* environment;
        int late, first, second;
        bool switches;
    } rows[] = {{"both 299 ms", TwoFingerSwitch, 0, 299, 0, true},
                {"both 300 ms", TwoFingerSwitch, 0, 300, 0, false},
                {"first 299, second 199", TwoFingerSwitch, 100, 199, 0, true},
                {"first 300, second 200", TwoFingerSwitch, 100, 200, 0, false},
                {"first 100, second 299", TwoFingerSwitch, 0, 100, 199, true},
                {"first 100, second 300", TwoFingerSwitch, 0, 100, 200, false},
                {"switched off", "", 0, 299, 0, false}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        FingerScript s = FingerScript::OnShapeView(OrthographicView(), WithSwitch(row.environment));
        TwoFingerTap(s, row.late, row.first, row.second);
        EXPECT_EQ(s.Answer(), true);
        EXPECT_EQ(s.Inspect().GetNavigateMode(), !row.switches);
        const Texts status = s.StatusCalls();
        EXPECT_EQ(status.size(), row.switches ? 5U : 3U);
        EXPECT_EQ(std::count(status.begin(), status.end(), "SetStatusMessage 1 Touch: select"), row.switches);
        s.ExpectNoActions();
        EXPECT_NE(s.Gesture(), touch::GestureTap);
    }
}

TEST(Taps, TwoFingersThatMoveOrHaveCompanyDoNotSwitch) {
    const struct {
        const char* name;
        Place first, second;
        bool third, switches;
    } rows[] = {{"first moved 30", {1, 330, 270}, {2, 400, 300}, false, true},
                {"first moved 31", {1, 331, 300}, {2, 400, 300}, false, false},
                {"second moved 30", {1, 300, 300}, {2, 430, 330}, false, true},
                {"second moved 31", {1, 300, 300}, {2, 400, 331}, false, false},
                {"a third finger", {1, 300, 300}, {2, 400, 300}, true, false}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        FingerScript s = FingerScript::OnShapeView(OrthographicView(), WithSwitch(TwoFingerSwitch));
        s.Down({{1, 300, 300}, {2, 400, 300}});
        if (row.third) {
            s.Down(3, 500, 300).Up(3);
        }
        s.Move({row.first, row.second}).Tick(200).Up(1).Rest().Up(2);
        EXPECT_EQ(s.Inspect().GetNavigateMode(), !row.switches);
    }
}

TEST(Taps, ATouchThatDoesNotSwitchCanStillEndInAClick) {
    FingerScript switchedOff = FingerScript::OnShapeView();
    TwoFingerTap(switchedOff, 0, 100, 0).ExpectMessages({"MsgClickLeft 400 300 passed"});

    FingerScript longHeld = FingerScript::OnShapeView(OrthographicView(), WithSwitch(TwoFingerSwitch));
    TwoFingerTap(longHeld, 300, 100, 0).ExpectActions({"MsgClickLeft 400 300 passed"});

    FingerScript moved = FingerScript::OnShapeView(OrthographicView(), WithSwitch(TwoFingerSwitch));
    moved.Down({{1, 300, 300}, {2, 400, 300}}).Move(1, 331, 300).Tick(100).Up(1).Rest().Mark().Up(2);
    moved.ExpectActions({"MsgClickLeft 400 300 passed"});
}

TEST(Taps, DrawingsAndImagesHaveNoModeToSwitchButShowTheText) {
    for (const std::string kind : {"drawingview", "imageview", "illustration2dview", "ecadschematicview"}) {
        SCOPED_TRACE(kind);
        const bool switches = kind != "drawingview" && kind != "imageview";
        FingerScript s = FingerScript::On2DView(kind, WithSwitch(TwoFingerSwitch));
        s.Down({{1, 300, 300}, {2, 400, 300}}).Tick(100).Mark().Up({1, 2});
        EXPECT_EQ(s.Answer(), true);
        EXPECT_EQ(s.Inspect().GetNavigateMode(), !switches);
        EXPECT_EQ(s.StatusCalls().size(), 5U);
        s.ExpectMessages({});
    }
}

// On a page the pan judges every lift of the leftmost finger, while another one is still down too.
TEST(Taps, OnAPageTheOrderOfTheLiftsDecidesHowOftenTheModeSwitches) {
    for (const int first : {1, 2}) {
        FingerScript s = FingerScript::On2DView("ecadpcbview", WithSwitch(TwoFingerSwitch));
        s.Down({{1, 300, 300}, {2, 400, 300}}).Tick(100).Up(first);
        EXPECT_EQ(s.Inspect().GetNavigateMode(), first == 2);
        s.Rest().Up(3 - first);
        EXPECT_EQ(s.Inspect().GetNavigateMode(), first == 1);
    }
}

}  // namespace
}  // namespace tests
