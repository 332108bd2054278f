// The status text.
#include "tests/support/FingerScript.h"

#include <gtest/gtest.h>

namespace tests {
namespace {

Texts Writes(const std::string& text) {
    return {"SetStatusMessage 1 " + text, "UpdateStatusMessage", "UpdateStatusMessage"};
}

TEST(StatusBar, BelongsToTheHostUntilTheFirstTouch) {
    FingerScript s = FingerScript::OnShapeView();
    EXPECT_EQ(s.StatusBar().Answer(), false);
    EXPECT_EQ(s.StatusCalls(), Texts{});
    s.Down(1, 400, 300).Mark();
    EXPECT_EQ(s.StatusBar().Answer(), true);
    EXPECT_EQ(s.StatusCalls(), Writes("Touch: navigate"));
    EXPECT_EQ(s.View().statusText, "Touch: navigate");
}

TEST(StatusBar, NamesTheModeOnEveryFrame) {
    FingerScript s = FingerScript::OnShapeView();
    s.Down(1, 400, 300);
    EXPECT_EQ(s.StatusCalls(), Writes("Touch: navigate"));
    s.Mark().Rest();
    EXPECT_EQ(s.StatusCalls(), Writes("Touch: navigate"));
    s.Up(1).SwitchMode().StatusBar();
    EXPECT_EQ(s.StatusCalls(), Writes("Touch: select"));
}

TEST(StatusBar, AFrameWritesItWhateverTheViewIs) {
    for (const char* kind : {"shapeview", "drawingview", "other", ""}) {
        SCOPED_TRACE(kind);
        FingerScript s = FingerScript::OnShapeView();
        viewer::ViewSpec view;
        view.kind = kind;
        s.SetView(*kind != '\0' ? std::optional(view) : std::nullopt).Down(1, 400, 300);
        EXPECT_EQ(s.StatusCalls(), Writes("Touch: navigate"));
    }
}

TEST(StatusBar, AMiddleOrRightDragGivesItBackUntilTheNextFrame) {
    for (const char* markup : {"leave_markup_mode", "enter_markup_mode"}) {
        for (const char* drag :
             {"MsgMouseInitMiddleDrag", "MsgMouseInitRightDrag", "MsgMouseMiddleDrag", "MsgMouseRightDrag"}) {
            SCOPED_TRACE(std::string(drag) + " " + markup);
            FingerScript s = FingerScript::OnShapeView();
            s.Mode(markup).Down(1, 400, 300).Up(1);
            EXPECT_EQ(s.Mouse(drag, -5, 700).Answer(), false);
            s.Mark();
            EXPECT_EQ(s.StatusBar().Answer(), false);
            EXPECT_EQ(s.StatusCalls(), Texts{});
            EXPECT_EQ(s.Down(1, 400, 300).StatusBar().Answer(), true);
        }
    }
}

}  // namespace
}  // namespace tests
