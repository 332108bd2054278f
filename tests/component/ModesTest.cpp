// Mode messages, preferences and the status text.
#include "tests/support/FingerScript.h"

#include <gtest/gtest.h>

namespace tests {
namespace {

const char RotationCenter[] = "Model Viewer/display_rotation_center";

viewer::ViewSpec ViewWithPreferences(const std::optional<viewer::PreferenceValues>& values) {
    viewer::ViewSpec view = OrthographicView();
    view.preferences = values;
    return view;
}

TEST(Modes, MarkupModeIsSwitchedOnlyByItsOwnMessages) {
    const struct {
        const char* name;
        bool before;
        const char* workflow;
        const char* mode;
        bool after;
    } rows[] = {{"enter", false, "touch", "enter_markup_mode", true},
                {"leave", true, "touch", "leave_markup_mode", false},
                {"enter for another workflow", false, "picker", "enter_markup_mode", false},
                {"leave for another workflow", true, "picker", "leave_markup_mode", true},
                {"letter case of the mode", false, "touch", "Enter_markup_mode", false},
                {"another mode", true, "touch", "explore", true}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        FingerScript s = FingerScript::OnShapeView();
        if (row.before) {
            s.Mode("enter_markup_mode");
        }
        EXPECT_EQ(s.Mode(row.mode, row.workflow).Answer(), false);
        EXPECT_EQ(s.Inspect().GetMarkupMode(), row.after);
    }
}

TEST(Modes, TheSpinCenterMarkupFollowsThePreference) {
    using Values = std::optional<viewer::PreferenceValues>;
    const Values on = {{{RotationCenter, true}}};
    const Values off = {{{RotationCenter, false}}};
    const Values without = {{{"Model Viewer/something_else", true}}};
    const struct {
        const char* name;
        Values atFirst;
        Values update;
        const char* workflow;
        bool exists;
    } rows[] = {{"no preferences, no data", std::nullopt, std::nullopt, "touch", false},
                {"switched on", std::nullopt, on, "touch", true},
                {"switched on twice", on, on, "touch", true},
                {"switched off", on, off, "touch", false},
                {"switched off for another workflow", on, off, "picker", false},
                {"no key", on, without, "touch", true},
                {"no data", on, std::nullopt, "touch", true}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        FingerScript s = FingerScript::OnShapeView(ViewWithPreferences(row.atFirst));
        const touch::SpinCenterMarkup* before = s.Inspect().GetSpinCenterMarkup();
        EXPECT_EQ(s.Preferences(row.update, row.workflow).Answer(), false);
        const touch::SpinCenterMarkup* after = s.Inspect().GetSpinCenterMarkup();
        EXPECT_EQ(after != nullptr, row.exists);
        EXPECT_TRUE(before == nullptr || after == nullptr || before == after) << "made a second one";
    }
}

TEST(Modes, AnotherViewAppliesItsPreferencesAndNoneKeepsThem) {
    FingerScript s = FingerScript::OnShapeView(ViewWithPreferences(std::nullopt));
    EXPECT_EQ(s.Inspect().GetSpinCenterMarkup(), nullptr);
    s.SetView(ViewWithPreferences({{{RotationCenter, true}}}));
    EXPECT_NE(s.Inspect().GetSpinCenterMarkup(), nullptr);
    s.SetView(ViewWithPreferences(std::nullopt));
    EXPECT_NE(s.Inspect().GetSpinCenterMarkup(), nullptr);
    s.SetView(std::nullopt);
    EXPECT_EQ(s.Component().GetView(), nullptr);
    EXPECT_NE(s.Inspect().GetSpinCenterMarkup(), nullptr);
    s.SetView(ViewWithPreferences({{{RotationCenter, false}}}));
    EXPECT_EQ(s.Inspect().GetSpinCenterMarkup(), nullptr);
}

TEST(Modes, APageOrNoViewHasNoSpinCenter) {
    FingerScript s = FingerScript::On2DView();
    s.Preferences({{{RotationCenter, true}}});
    EXPECT_EQ(s.Inspect().GetSpinCenterMarkup(), nullptr);
    s.SetView(std::nullopt).Preferences({{{RotationCenter, true}}});
    EXPECT_EQ(s.Inspect().GetSpinCenterMarkup(), nullptr);
}

TEST(StatusBar, BelongsToTheHostUntilTheFirstTouch) {
    FingerScript s = FingerScript::OnShapeView();
    EXPECT_EQ(s.StatusBar().Answer(), false);
    EXPECT_EQ(s.StatusCalls(), Texts{});
    s.Down(1, 400, 300).Mark();
    EXPECT_EQ(s.StatusBar().Answer(), true);
    EXPECT_EQ(s.StatusCalls(),
              (Texts{"SetStatusMessage 1 Touch: navigate", "UpdateStatusMessage", "UpdateStatusMessage"}));
    EXPECT_EQ(s.View().statusText, "Touch: navigate");
}

}  // namespace
}  // namespace tests
