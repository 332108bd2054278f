// Trace lines byte by byte, beyond what the traces of tests/sessions fix.
#include "replay/play/TraceWriter.h"

#include "host/dg/Location.h"

#include <gtest/gtest.h>

#include <limits>
#include <sstream>
#include <string>
#include <vector>

namespace replay {
namespace {

TEST(TraceWriter, WritesWhatTheRecordedTracesDoNotHold) {
    const double infinity = std::numeric_limits<double>::infinity();
    const double notANumber = std::numeric_limits<double>::quiet_NaN();
    const dg::Location tilted({1, 0, 0}, {0, 0.6F, 0.8F}, {0, -0.8F, 0.6F}, {0.1, -20, 1e300});
    struct Row {
        const char* name;
        std::vector<viewer::Call> calls;
        const char* text;
    };
    const std::vector<Row> rows = {
        {"no call", {}, ""},
        {"two in their order", {viewer::PlainCall{"Cancel"}, viewer::PlainCall{"Show"}}, R"(["Cancel"], ["Show"])"},
        {"axes in single and position in double precision",
         {viewer::SetCameraLocationCall{tilted}},
         R"(["SetCameraLocation", [1, 0, 0], [0, 0.6, 0.8], [0, -0.8, 0.6], [0.1, -20, 1e+300]])"},
        {"an infinite width",
         {viewer::SetWidthCall{"SetOrthographicWidth", infinity}},
         R"(["SetOrthographicWidth", "Infinity"])"},
        {"numbers that are not finite inside an array",
         {viewer::SetPositionCall{{notANumber, -infinity, 2}}},
         R"(["SetPosition", ["NaN", "-Infinity", 2]])"},
        {"text that must be escaped",
         {viewer::SetStatusMessageCall{1, "a \"b\" \\ \t \x01 \xC3\xA9"}},
         "[\"SetStatusMessage\", 1, \"a \\\"b\\\" \\\\ \\t \\u0001 \xC3\xA9\"]"},
        {"values of 64 bits",
         {viewer::AddTransitionCall{{}, {}, {1, 2, 3}, {0, 100, 15, -9223372036854775807}, false}},
         R"(["AddTransition", {"start": [[1, 0, 0], [0, 1, 0], [0, 0, 1], [0, 0, 0]], )"
         R"("end": [[1, 0, 0], [0, 1, 0], [0, 0, 1], [0, 0, 0]], )"
         R"("center": [1, 2, 3], "values": [0, 100, 15, -9223372036854775807], "flag": false}])"},
        {"bytes that are not UTF-8", {viewer::TraceCall{"\xFF\n"}}, "[\"Trace\", \"\xEF\xBF\xBD\\n\"]"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const Event event = StatusBarEvent{};
        std::ostringstream text;
        WriteTraceLine({7, std::nullopt, touch::GestureSpin, touch::GestureRecognized, true, row.calls, event}, text);
        EXPECT_EQ(text.str(),
                  R"({"event": 7, "handled": null, "gesture": "GestureSpin", "state": "GestureRecognized", )"
                  R"("navigate": true, "calls": [)" +
                      std::string(row.text) + "]}\n");
    }
}

}  // namespace
}  // namespace replay
