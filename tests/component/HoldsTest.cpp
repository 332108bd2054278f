// Holds: one still finger becomes a right click, three still fingers switch the mode.
#include "tests/support/FingerScript.h"

#include <gtest/gtest.h>

namespace tests {
namespace {

const Texts RightClick = {"MsgMouseRightDown 402 301 unheard", "MsgMouseRightUp 402 301 unheard"};

// A finger that came down at (400, 300) and whose latest record, at (402, 301), is that many ms younger.
FingerScript& HoldFor(FingerScript& s, int milliseconds, int flags = viewer::TouchMove) {
    s.Down(1, 400, 300).Mark();
    return s.Frame({{1, 402, 301, s.TouchTime() + milliseconds, flags}}, 1);
}

TEST(PressAndHold, ClicksOnTheTickThatFindsTheHoldWithinItsInterval) {
    struct Row {
        const char* name;
        int duration;
        bool clicks;
    };
    const Row rows[] = {{"one short", 1000, false}, {"first", 1001, true}, {"last", 1099, true}, {"over", 1100, false}};
    for (const char* kind : {"shapeview", "drawingview"}) {
        for (const Row& row : rows) {
            SCOPED_TRACE(std::string(row.name) + ", " + kind);
            viewer::ViewSpec view = PageView(kind);
            view.camera = OrthographicView().camera;
            FingerScript s = FingerScript::OnShapeView(view);
            HoldFor(s, row.duration).ExpectNoActions().Tick();
            s.ExpectActions(row.clicks ? RightClick : Texts{});
            EXPECT_EQ(s.Inspect().IsHoldClickSent(), row.clicks);
            s.Tick().ExpectNoActions();
        }
    }
}

struct HoldRow {
    const char* name;
    void (*story)(FingerScript&);
    Texts messages;
};

const HoldRow HoldRows[] = {
    {"a drag in multi-select mode", [](FingerScript& s) { HoldFor(s.SwitchMode(), 1050).Tick(); }, RightClick},
    {"moved 31",
     [](FingerScript& s) {
         s.Down(1, 400, 300).Frame({{1, 400, 331, s.TouchTime() + 1050, viewer::TouchMove}}, 1).Tick();
     },
     {}},
    {"moved 30",
     [](FingerScript& s) {
         s.Down(1, 400, 300).Frame({{1, 430, 270, s.TouchTime() + 1050, viewer::TouchMove}}, 1).Tick();
     },
     {"MsgMouseRightDown 430 270 unheard", "MsgMouseRightUp 430 270 unheard"}},
    {"no place",
     [](FingerScript& s) {
         s.Down(1, 400, 300).Frame({{1, 0, 0, s.TouchTime() + 1050, viewer::TouchMove}}, 1).Tick();
     },
     {"MsgMouseRightDown 0 0 unheard", "MsgMouseRightUp 0 0 unheard"}},
    {"lifted", [](FingerScript& s) { HoldFor(s, 1050, viewer::TouchUp).Tick(); }, {}},
    {"no event", [](FingerScript& s) { HoldFor(s, 1050, 0).Tick(); }, {}},
    {"two",
     [](FingerScript& s) {
         s.Down({{1, 400, 300}, {2, 500, 300}}).Hold(1200);
     },
     {}},
    {"turned", [](FingerScript& s) { s.Down(1, 400, 300).Move(1, 440, 300).Move(1, 400, 300).Hold(1200); }, {}},
    {"panned by the other finger",
     [](FingerScript& s) {
         s.Down({{1, 300, 300}, {2, 400, 300}}).Move(2, 420, 300).Up(2).Hold(1200);
     },
     {}},
    {"the finger that stays has another slot than the first",
     [](FingerScript& s) { s.Down(1, 300, 300).Down(2, 400, 300).Up(1).Hold(1200); },
     {}},
    {"markup mode", [](FingerScript& s) { s.Mode("enter_markup_mode").Down(1, 400, 300).Hold(1200); }, {}},
};

TEST(PressAndHold, NeedsOneStillFingerThatIsDownAndHasMovedNothing) {
    for (const HoldRow& row : HoldRows) {
        SCOPED_TRACE(row.name);
        FingerScript s = FingerScript::OnShapeView();
        row.story(s);
        Texts clicks = s.Actions();
        std::erase_if(clicks, [](const std::string& action) { return action.find("Right") == std::string::npos; });
        EXPECT_EQ(clicks, row.messages);
    }
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
    return s.Frame({{1, x, 300, now + first, viewer::TouchMove},
                    {2, 400, 300, now + second, viewer::TouchMove},
                    {3, 500, 300, now + third, viewer::TouchMove}},
                   3);
}

TEST(ThreeFingerHold, SwitchesTheModeWhenAllHaveBeenStillForThreeSeconds) {
    struct Row {
        const char* name;
        int first, second, third, x;
        bool switches;
    };
    const Row rows[] = {
        {"all 3000", 3000, 3000, 3000, 300, false},    {"all 3001", 3001, 3001, 3001, 300, true},
        {"first 3000", 3000, 3001, 3001, 300, false},  {"second 3000", 3001, 3000, 3001, 300, false},
        {"third 3000", 3001, 3001, 3000, 300, false},  {"all 3099", 3099, 3099, 3099, 300, true},
        {"third 3100", 3050, 3050, 3100, 300, false},  {"the others much longer", 9000, 9000, 3050, 300, true},
        {"one moved 30", 3050, 3050, 3050, 330, true}, {"one moved 31", 3050, 3050, 3050, 331, false}};
    for (const Row& row : rows) {
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
