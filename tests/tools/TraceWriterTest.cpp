// Trace lines byte by byte.
#include "replay/TraceWriter.h"

#include "host/dg/Location.h"

#include <gtest/gtest.h>

#include <limits>
#include <sstream>
#include <string>
#include <vector>

namespace replay {
namespace {

std::string LineOf(const std::vector<viewer::Call>& calls, std::optional<bool> handled = false) {
    const Event event = StatusBarEvent{};
    std::ostringstream text;
    WriteTraceLine({7, handled, touch::GestureSpin, touch::GestureRecognized, true, calls, event}, text);
    return text.str();
}

struct CallRow {
    const char* name;
    viewer::Call call;
    const char* text;
};

const double Infinity = std::numeric_limits<double>::infinity();
const double NotANumber = std::numeric_limits<double>::quiet_NaN();
const dg::Location Tilted({1, 0, 0}, {0, 0.6F, 0.8F}, {0, -0.8F, 0.6F}, {0.1, -20, 1e300});

const std::vector<CallRow> CallRows = {
    {"without arguments", viewer::PlainCall{"StopTransition"}, R"(["StopTransition"])"},
    {"axes in single and position in double precision", viewer::SetCameraLocationCall{Tilted},
     R"(["SetCameraLocation", [1, 0, 0], [0, 0.6, 0.8], [0, -0.8, 0.6], [0.1, -20, 1e+300]])"},
    {"an infinite width", viewer::SetWidthCall{"SetOrthographicWidth", Infinity},
     R"(["SetOrthographicWidth", "Infinity"])"},
    {"width of a page", viewer::SetWidthCall{"SetOrthoWidth", 0.1}, R"(["SetOrthoWidth", 0.1])"},
    {"numbers that are not finite inside an array", viewer::SetPositionCall{{NotANumber, -Infinity, 2}},
     R"(["SetPosition", ["NaN", "-Infinity", 2]])"},
    {"message that the component answered", viewer::SendMessageCall{"MsgClickLeft", -3, 4, false},
     R"(["SendMessage", "MsgClickLeft", -3, 4, false])"},
    {"message that the component consumed", viewer::SendMessageCall{"MsgMouseMove", 1, 2, true},
     R"(["SendMessage", "MsgMouseMove", 1, 2, true])"},
    {"message that the component does not hear", viewer::SendMessageCall{"MsgMouseRightUp", 1, 2, {}},
     R"(["SendMessage", "MsgMouseRightUp", 1, 2, null])"},
    {"mode message", viewer::SendModeMessageCall{"picker", "enable_preselect", 0},
     R"(["SendModeMessage", "picker", "enable_preselect", 0])"},
    {"text that must be escaped", viewer::SetStatusMessageCall{1, "a \"b\" \\ \t \x01 \xC3\xA9"},
     "[\"SetStatusMessage\", 1, \"a \\\"b\\\" \\\\ \\t \\u0001 \xC3\xA9\"]"},
    {"markup", viewer::AddMarkupCall{{1, 2, 3}}, R"(["AddMarkup", [1, 2, 3]])"},
    {"transition",
     viewer::AddTransitionCall{dg::Location(), Tilted, {1, 2, 3}, {0, 100, 15, -9223372036854775807}, false},
     R"(["AddTransition", {"start": [[1, 0, 0], [0, 1, 0], [0, 0, 1], [0, 0, 0]], )"
     R"("end": [[1, 0, 0], [0, 0.6, 0.8], [0, -0.8, 0.6], [0.1, -20, 1e+300]], )"
     R"("center": [1, 2, 3], "values": [0, 100, 15, -9223372036854775807], "flag": false}])"},
    {"box request", viewer::ManageObjectCall{true}, R"(["ManageObject", true])"},
    {"box question", viewer::GetBoundingBoxCall{false, true}, R"(["GetBoundingBox", false, true])"},
    {"trace text with its line end", viewer::TraceCall{"failed.\n"}, R"(["Trace", "failed.\n"])"},
    {"bytes that are not UTF-8", viewer::TraceCall{"\xFF"}, "[\"Trace\", \"\xEF\xBF\xBD\"]"},
};

TEST(TraceWriter, WritesEveryKindOfCall) {
    for (const CallRow& row : CallRows) {
        SCOPED_TRACE(row.name);
        const std::string expected =
            R"({"event": 7, "handled": false, "gesture": "GestureSpin", "state": "GestureRecognized", )"
            R"("navigate": true, "calls": [)" +
            std::string(row.text) + "]}\n";
        EXPECT_EQ(LineOf({row.call}), expected);
    }
}

TEST(TraceWriter, KeepsTheOrderOfCallsAndToldAnswers) {
    const std::string head =
        R"(, "gesture": "GestureSpin", "state": "GestureRecognized", "navigate": true, "calls": [)";
    EXPECT_EQ(LineOf({}, true), R"({"event": 7, "handled": true)" + head + "]}\n");
    EXPECT_EQ(LineOf({viewer::PlainCall{"Cancel"}, viewer::PlainCall{"RemoveMarkup"}}, std::nullopt),
              R"({"event": 7, "handled": null)" + head + R"(["Cancel"], ["RemoveMarkup"]]})" + "\n");
}

}  // namespace
}  // namespace replay
