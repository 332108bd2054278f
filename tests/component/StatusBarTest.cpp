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
