// The recorded sessions of tests/sessions: each gives its trace to the byte, and together they show everything that the
// component hears and says. scripts/accept-traces shows differences and accepts them when asked.
#include "replay/Player.h"
#include "replay/SessionReader.h"
#include "replay/TraceWriter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>

namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;
using ::testing::Not;

constexpr const char* SessionEnding = ".session.jsonl";

std::string ReadAll(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file) << path;
    return {std::istreambuf_iterator<char>(file), {}};
}

std::string SessionOf(const std::string& name) {
    return ReadAll(fs::path(SESSIONS_DIR) / (name + SessionEnding));
}
std::string TraceOf(const std::string& name) {
    return ReadAll(fs::path(SESSIONS_DIR) / (name + ".trace.jsonl"));
}

std::string Replayed(const fs::path& path) {
    const replay::Session session = replay::ReadSessionFile(path.string());
    replay::Player player(session, TOUCHNAV_PLUGIN, nullptr);
    std::ostringstream trace;
    player.Play([&](const replay::Observation& observation) { replay::WriteTraceLine(observation, trace); });
    return trace.str();
}

TEST(Sessions, EachGivesItsTraceToTheByteAndIsListed) {
    const std::string list = ReadAll(fs::path(SESSIONS_DIR) / "README.md");
    int sessions = 0;
    for (const fs::directory_entry& entry : fs::directory_iterator(SESSIONS_DIR)) {
        const std::string file = entry.path().filename().string();
        if (!file.ends_with(SessionEnding)) {
            continue;
        }
        ++sessions;
        const std::string name = file.substr(0, file.size() - std::string(SessionEnding).size());
        SCOPED_TRACE(name);
        EXPECT_THAT(list, HasSubstr("| " + name + " |"));
        std::istringstream expected(TraceOf(name));
        std::istringstream actual(Replayed(entry.path()));
        std::string expectedLine;
        std::string actualLine;
        while (std::getline(expected, expectedLine)) {
            std::getline(actual, actualLine);
            ASSERT_EQ(actualLine, expectedLine);
        }
        EXPECT_FALSE(std::getline(actual, actualLine)) << "one line too many: " << actualLine;
    }
    EXPECT_GT(sessions, 0);
}

// What the trace must hold, and for a switch what it must not hold because of it.
TEST(Sessions, ShowEveryModeSwitchAndMessage) {
    struct Row {
        const char* shown;
        const char* session;
        const char* inSession;
        const char* inTrace;
        const char* notInTrace;
    };
    const char* no = "no such text";
    const char* handled = R"("handled": true)";
    const Row rows[] = {
        {"navigate mode", "spin-echo", R"("touch")",
         R"("gesture": "GestureSpin", "state": "GestureRecognized", "navigate": true)", no},
        {"multi-select mode", "select-drag", R"("touch")",
         R"("gesture": "GestureDrag", "state": "GestureRecognized", "navigate": false)", no},
        {"markup mode", "markup-mode", R"(["touch", "enter_markup_mode"])", R"("GestureMarkup")", no},

        {"pan without a switch", "pan-pinch-twist", R"("touch")",
         R"([["SetStatusMessage", 1, "Touch: navigate"], ["UpdateStatusMessage"], ["UpdateStatusMessage"], ["SetCameraLocation")",
         no},
        {"DONTPAN", "switch-dont-pan", "HXAPP_DONTPAN", "SetOrthographicWidth",
         R"(["UpdateStatusMessage"], ["SetCameraLocation")"},
        {"DONTZOOM", "switch-dont-zoom", "HXAPP_DONTZOOM", "SetCameraLocation", "SetOrthographicWidth"},
        {"a twist turns U", "pan-pinch-twist", R"("touch")", R"("SetCameraLocation", [0.9)", no},
        {"DONTSPIN", "switch-dont-spin", "HXAPP_DONTSPIN", "SetOrthographicWidth", R"("SetCameraLocation", [0.9)"},
        {"two-finger tap", "switch-two-finger-tap", "HXAPP_TWO_FINGER_TAP_TOUCH_MODE_CHANGE", R"("navigate": false)",
         no},
        {"two-hands explore", "two-hands-flight", "HXAPP_TOUCH_TWO_HANDS_EXPLORE", "SetCameraLocation", no},

        {"MsgTouch", "spin-echo", R"("touch")", handled, no},
        {"MsgUpdateStatusBar", "tap-guarded", R"("statusBar")", handled, no},
        {"MsgMouseLeftDown", "spin-echo", "MsgMouseLeftDown", handled, no},
        {"MsgMouseInitLeftDrag", "spin-echo", "MsgMouseInitLeftDrag", handled, no},
        {"MsgMouseLeftDrag", "spin-echo", "MsgMouseLeftDrag", handled, no},
        {"MsgMouseLeftUp", "spin-echo", "MsgMouseLeftUp", handled, no},
        {"MsgMouseInitRightDrag", "mouse-drags", "MsgMouseInitRightDrag", R"("handled": false)", R"("handled": null)"},
        {"MsgMouseRightDrag", "mouse-drags", "MsgMouseRightDrag", R"("handled": false)", R"("handled": null)"},
        {"MsgMouseInitMiddleDrag", "mouse-drags", "MsgMouseInitMiddleDrag", R"("handled": false)",
         R"("handled": null)"},
        {"MsgMouseMiddleDrag", "mouse-drags", "MsgMouseMiddleDrag", R"("handled": false)", R"("handled": null)"},
        {"MsgMouseMove", "spin-echo", "MsgMouseMove", handled, no},
        {"MsgClickLeft", "spin-echo", "MsgClickLeft", handled, no},
        {"MsgDoubleClickLeft", "double-click", "MsgDoubleClickLeft", handled, no},
        {"MsgTimer", "coasting", R"("timer")", R"("event": 22, "handled": false)", no},
        {"MsgSetMode", "preferences", R"("preferences")", "AddMarkup", no},
        {"no right button", "spin-echo", "MsgMouseRightDown", R"("handled": null)", no},

        {"sent MsgMouseLeftDown", "select-drag", "", R"(["SendMessage", "MsgMouseLeftDown", 300, 400, false])", no},
        {"sent MsgMouseLeftDrag", "select-drag", "", R"(["SendMessage", "MsgMouseLeftDrag", 600, 200, false])", no},
        {"sent MsgMouseMove", "tap-guarded", "", R"(["SendMessage", "MsgMouseMove", 500, 300, true])", no},
        {"sent MsgClickLeft", "tap-guarded", "", R"(["SendMessage", "MsgClickLeft", 500, 300, false])", no},
        {"sent MsgMouseRightDown", "press-and-hold", "", R"(["SendMessage", "MsgMouseRightDown", 500, 300, null])", no},
        {"sent MsgMouseRightUp", "press-and-hold", "", R"(["SendMessage", "MsgMouseRightUp", 500, 300, null])", no},
        {"sent enable_preselect", "tap-guarded", "", R"(["SendModeMessage", "picker", "enable_preselect", 0])", no},
        {"sent enable_geom_preselect", "tap-guarded", "",
         R"(["SendModeMessage", "picker", "enable_geom_preselect", 1])", no},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.shown);
        EXPECT_THAT(SessionOf(row.session), HasSubstr(row.inSession));
        const std::string trace = TraceOf(row.session);
        EXPECT_THAT(trace, HasSubstr(row.inTrace));
        EXPECT_THAT(trace, Not(HasSubstr(row.notInTrace)));
    }
}

}  // namespace
