// Holds: one still finger becomes a right click, three still fingers switch the mode.
#include "tests/support/FingerScript.h"

#include <gtest/gtest.h>

namespace tests {
namespace {

// A finger that came down at (400, 300) and whose latest record is that many ms younger.
FingerScript& HoldFor(FingerScript& s, int milliseconds, int x = 402, int y = 301, int flags = workflow::TouchMove) {
    s.Down(1, 400, 300);
    return s.Frame({{1, x, y, s.TouchTime() + milliseconds, flags}}, 1).Mark();
}

TEST(PressAndHold, ClicksOnTheTickThatFindsTheStillFingerWithinItsInterval) {
    struct Row {
        const char* name;
        int duration, x, y, flags;
        bool clicks;
    };
    constexpr int Moves = workflow::TouchMove;
    const Row rows[] = {
        {"one short", 1000, 402, 301, Moves, false}, {"first", 1001, 402, 301, Moves, true},
        {"last", 1099, 402, 301, Moves, true},       {"over", 1100, 402, 301, Moves, false},
        {"moved 30", 1050, 430, 270, Moves, true},   {"moved 31", 1050, 400, 331, Moves, false},
        {"no place", 1050, 0, 0, Moves, true},       {"lifted", 1050, 402, 301, workflow::TouchUp, false},
        {"no event", 1050, 402, 301, 0, false}};
    for (const char* kind : {"shapeview", "drawingview"}) {
        for (const Row& row : rows) {
            SCOPED_TRACE(std::string(row.name) + ", " + kind);
            viewer::ViewSpec view = PageView(kind);
            view.camera = OrthographicView().camera;
            FingerScript s = FingerScript::OnShapeView(view);
            HoldFor(s, row.duration, row.x, row.y, row.flags).Tick();
            const std::string at = std::to_string(row.x) + " " + std::to_string(row.y) + " unheard";
            s.ExpectActions(row.clicks ? Texts{"MsgMouseRightDown " + at, "MsgMouseRightUp " + at} : Texts{});
            s.Tick().ExpectNoActions();
        }
    }
}

TEST(PressAndHold, IsOfOneFingerThatHasChangedNothingOrDragsInMultiSelectMode) {
    FingerScript drag = FingerScript::OnShapeView();
    HoldFor(drag.SwitchMode(), 1050).Tick();
    drag.ExpectMessages({"MsgMouseRightDown 402 301 unheard", "MsgMouseRightUp 402 301 unheard"});

    FingerScript two = FingerScript::OnShapeView();
    two.Down({{1, 400, 300}, {2, 500, 300}}).Hold(1200).ExpectMessages({});

    FingerScript turned = FingerScript::OnShapeView();
    turned.Down(1, 400, 300).Move(1, 440, 300).Move(1, 400, 300).Hold(1200).ExpectMessages({});

    FingerScript panned = FingerScript::OnShapeView();  // by the other finger
    panned.Down({{1, 300, 300}, {2, 400, 300}}).Move(2, 420, 300).Up(2).Hold(1200).ExpectMessages({});

    FingerScript markup = FingerScript::OnShapeView();
    markup.Mode("enter_markup_mode").Down(1, 400, 300).Hold(1200).ExpectMessages({});

    // The first finger pans and goes; what stays has a slot that is not the first.
    FingerScript second = FingerScript::OnShapeView();
    second.Down(1, 300, 300).Down(2, 400, 300).Up(1).Hold(1200).ExpectMessages({});
}

TEST(PressAndHold, AfterTheClickTheFingerNavigatesNoMore) {
    for (const char* kind : {"shapeview", "drawingview"}) {
        SCOPED_TRACE(kind);
        viewer::ViewSpec view = PageView(kind);
        view.camera = OrthographicView().camera;
        FingerScript s = FingerScript::OnShapeView(view);
        EXPECT_EQ(s.Down(1, 300, 200).Hold(1050).Mark().Move(1, 500, 200).Answer(), false);
        EXPECT_EQ(s.Up(1).Answer(), true) << "a lift is used up, tap or not";
        s.ExpectNoActions();
    }
}

// Slots 0, 1, 2 with the age of their latest records.
FingerScript& HoldThree(FingerScript& s, int first, int second, int third, int x = 300) {
    s.Down({{1, 300, 300}, {2, 400, 300}, {3, 500, 300}});
    const std::int32_t now = s.TouchTime();
    return s.Frame({{1, x, 300, now + first, workflow::TouchMove},
                    {2, 400, 300, now + second, workflow::TouchMove},
                    {3, 500, 300, now + third, workflow::TouchMove}},
                   3);
}

TEST(ThreeFingerHold, SwitchesTheModeWhenAllHaveBeenStillForThreeSeconds) {
    const struct {
        const char* name;
        int first, second, third, x;
        bool switches;
    } rows[] = {{"all 3000", 3000, 3000, 3000, 300, false},    {"all 3001", 3001, 3001, 3001, 300, true},
                {"first 3000", 3000, 3001, 3001, 300, false},  {"second 3000", 3001, 3000, 3001, 300, false},
                {"third 3000", 3001, 3001, 3000, 300, false},  {"all 3099", 3099, 3099, 3099, 300, true},
                {"third 3100", 3050, 3050, 3100, 300, false},  {"the others much longer", 9000, 9000, 3050, 300, true},
                {"one moved 30", 3050, 3050, 3050, 330, true}, {"one moved 31", 3050, 3050, 3050, 331, false}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        FingerScript s = FingerScript::OnShapeView();
        HoldThree(s, row.first, row.second, row.third, row.x).Mark().Tick();
        EXPECT_EQ(s.Inspect().GetNavigateMode(), !row.switches);
        EXPECT_EQ(s.StatusCalls(),
                  row.switches ? (Texts{"SetStatusMessage 1 Touch: select", "UpdateStatusMessage"}) : Texts{});
        s.ExpectNoActions();
    }
}

TEST(ThreeFingerHold, SwitchesOnceInATouchAndBackInTheNext) {
    FingerScript s = FingerScript::OnShapeView();
    s.Down({{1, 300, 300}, {2, 400, 300}, {3, 500, 300}}).Hold(3000);
    EXPECT_TRUE(s.Inspect().GetNavigateMode());
    s.Hold(4000);
    EXPECT_FALSE(s.Inspect().GetNavigateMode());
    s.Up({1, 2, 3}).Wait(600).Down({{1, 300, 300}, {2, 400, 300}, {3, 500, 300}}).Hold(3100);
    EXPECT_TRUE(s.Inspect().GetNavigateMode());
}

TEST(ThreeFingerHold, NeedsExactlyThreeAndNoMarkupMode) {
    const std::vector<Place> places = {{1, 300, 300}, {2, 400, 300}, {3, 500, 300}, {4, 600, 300}};
    for (const int count : {2, 3, 4}) {
        FingerScript s = FingerScript::OnShapeView();
        s.Mode(count == 3 ? "enter_markup_mode" : "leave_markup_mode");
        s.Down({places.begin(), places.begin() + count}).Hold(3100);
        EXPECT_TRUE(s.Inspect().GetNavigateMode()) << count;
    }
}

TEST(ThreeFingerHold, DrawingsAndImagesOnlyShowTheTextOnEveryTick) {
    for (const char* kind : {"drawingview", "imageview", "illustration2dview", "ecadpcbview"}) {
        SCOPED_TRACE(kind);
        const bool switches = std::string(kind) == "illustration2dview" || std::string(kind) == "ecadpcbview";
        FingerScript s = FingerScript::On2DView(kind);
        HoldThree(s, 3050, 3050, 3050).Mark().Tick().Tick();
        EXPECT_EQ(s.Inspect().GetNavigateMode(), !switches);
        EXPECT_EQ(s.StatusCalls().size(), switches ? 2U : 4U);
    }
}

TEST(ThreeFingerHold, WithoutAViewTheModeIsSwitched) {
    FingerScript s = FingerScript::On2DView("imageview");
    HoldThree(s, 3050, 3050, 3050).SetView(std::nullopt).Tick();
    EXPECT_FALSE(s.Inspect().GetNavigateMode());
}

}  // namespace
}  // namespace tests
