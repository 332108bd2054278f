// Reading and writing sessions: every key, every kind of fault, and the round trip.
#include "replay/SessionReader.h"
#include "replay/InputFile.h"
#include "replay/JsonNumbers.h"
#include "replay/ReadError.h"
#include "replay/SessionWriter.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace {

using replay::ReadSession;
using replay::Session;

const std::string Camera = R"({"orthographic": false, "window": [-1, 2, -3, 4], "distance": 5, "u": [0, 1, 0],)"
                           R"( "v": [0, 0, 1], "w": [1, 0, 0], "position": [6, 7, 8]})";
const std::string Header = R"({"session": 1, "view": null})";

Session Read(const std::string& text) {
    std::istringstream input(text);
    return ReadSession(input, "a.jsonl");
}

std::string ErrorOf(const std::string& text) {
    try {
        (void)Read(text);
    } catch (const replay::ReadError& error) {
        return error.what();
    }
    return "no error";
}

std::string Written(const Session& session) {
    std::ostringstream output;
    replay::WriteSession(session, output);
    return output.str();
}

// What is written reads back equal, and is written the same.
void ExpectRoundTrip(const Session& session) {
    const std::string text = Written(session);
    EXPECT_EQ(Read(text), session) << text;
    EXPECT_EQ(Written(Read(text)), text);
}

TEST(SessionReader, EveryKeyOfTheHeaderArrives) {
    EXPECT_EQ(Read(Header), Session());
    const Session session =
        Read(R"({"session": 1, "view": {"kind": "shapeview", "size": [640, 480], "camera": )" + Camera +
             R"(, "spinCenter": [1, 2, 3], "bounds": [[-1, -2, -3], [4, 5, 6]],)"
             R"( "navMethod": "explore", "navSpeed": 2.5, "preferences": {"a/b": true, "c": false}},)"
             R"( "ppi": [120, 0], "environment": ["ONE", "TWO"], "preselectGuard": true,)"
             R"( "boundsAnswer": "never", "playTransitions": false})");
    Session expected;
    expected.host = {120, 0, {"ONE", "TWO"}, true, viewer::BoundsAnswer::Never, false};
    expected.view.emplace();
    expected.view->width = 640;
    expected.view->height = 480;
    expected.view->camera = {false, -1, 2, -3, 4, 5, {{0, 1, 0}, {0, 0, 1}, {1, 0, 0}, {6, 7, 8}}};
    expected.view->spinCenter = {1, 2, 3};
    expected.view->bounds = {{-1, -2, -3}, {4, 5, 6}};
    expected.view->navMethod = "explore";
    expected.view->navSpeed = 2.5;
    expected.view->preferences = {{"a/b", true}, {"c", false}};
    EXPECT_EQ(session, expected);
    ExpectRoundTrip(expected);
}

TEST(SessionReader, EveryEventArrivesAndIsWritten) {
    viewer::TouchFrame two;
    two.count = 2;
    two.records[0] = {7, 640, 400, 5000, 2};
    two.records[1] = {8, -1, 2147483647, -2147483648, 7};
    viewer::TouchFrame odd = two;
    odd.records[1] = {};
    odd.count = -3;
    viewer::ViewChange change;
    change.navMethod = "explore";
    change.bounds = dg::DBox::EMPTY;
    viewer::ViewChange rest;
    rest.camera = viewer::CameraSpec{false, -1, 2, -3, 4, 5, {{0, 1, 0}, {0, 0, 1}, {1, 0, 0}, {6, 7, 8}}};
    rest.spinCenter = {-0.0, 0.1, 5e-324};
    rest.navSpeed = 0.30000000000000004;
    viewer::ViewSpec other;
    other.kind = "other";
    other.width = 0;
    other.height = 4294967295;
    viewer::ViewSpec page;
    page.kind = "drawingview";
    page.width = 10;
    page.height = 20;
    page.orthoWidth = 32;
    viewer::ViewSpec placed = page;
    placed.placement = {{0, 1, 0}, {-1, 0, 0}, {0, 0, 1}, {1, 2, 3}};

    struct Row {
        std::string line;
        replay::Event event;
    };
    const std::vector<Row> rows = {
        {R"({"touch": [[7, 640, 400, 5000, 2], [8, -1, 2147483647, -2147483648, 7]]})", replay::TouchEvent{two}},
        {R"({"touch": [[7, 640, 400, 5000, 2]], "count": -3})", replay::TouchEvent{odd}},
        {R"({"touch": []})", replay::TouchEvent{}},
        {R"({"timer": [9223372036854775807, -9223372036854775808]})", replay::TimerEvent{INT64_MAX, INT64_MIN}},
        {R"({"mouse": ["MsgDoubleClickLeft", 5, -6]})", replay::MouseEvent{"MsgDoubleClickLeft", 5, -6}},
        {R"({"mode": ["touch", "a \"b\" \\c\nMa\u00df"]})", replay::ModeEvent{"touch", "a \"b\" \\c\nMaß"}},
        {R"({"preferences": {"x": true}})", replay::PreferencesEvent{{{{"x", true}}}, "touch"}},
        {R"({"preferences": null, "workflow": "picker"})", replay::PreferencesEvent{std::nullopt, "picker"}},
        {R"({"statusBar": true})", replay::StatusBarEvent{}},
        {R"({"setView": null})", replay::SetViewEvent{}},
        {R"({"setView": {"kind": "other", "size": [0, 4294967295]}})", replay::SetViewEvent{other}},
        {R"({"setView": {"kind": "drawingview", "size": [10, 20], "width": 32}})", replay::SetViewEvent{page}},
        {R"({"setView": {"kind": "drawingview", "size": [10, 20], "width": 32, "u": [0, 1, 0], "v": [-1, 0, 0],)"
         R"( "w": [0, 0, 1], "position": [1, 2, 3]}})",
         replay::SetViewEvent{placed}},
        {R"({"viewer": {"navMethod": "explore", "bounds": null}})", replay::ViewerEvent{change}},
        {R"({"viewer": {"navSpeed": 0.30000000000000004, "spinCenter": [-0, 0.1, 5e-324], "camera": )" + Camera + "}}",
         replay::ViewerEvent{rest}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.line);
        const Session session = Read(Header + "\n" + row.line + "\n");
        ASSERT_EQ(session.events.size(), 1U);
        EXPECT_EQ(session.events[0], row.event);
        EXPECT_EQ(Written(session), Written({session.host, session.view, {row.event}})) << "also the sign of zero";
        ExpectRoundTrip(session);
    }
}

TEST(SessionReader, AFaultIsNamedWithItsLine) {
    const auto view = [](const std::string& keys) {
        return R"({"session": 1, "view": {"size": [1, 2], )" + keys + "}}";
    };
    const std::string shape = R"("kind": "shapeview", "camera": )" + Camera;
    const std::string page = R"("kind": "imageview", "width": 1)";
    std::string eleven = "[0, 0, 0, 0, 0]";
    for (int i = 0; i < 10; ++i) {
        eleven += ", [0, 0, 0, 0, 0]";
    }
    struct Row {
        std::string text;      // of the line at fault
        std::string expected;  // part of the message
    };
    const std::vector<Row> headers = {
        {"", "header"},
        {R"({"timer": [1, 2]})", "unknown key \"timer\""},
        {R"({"view": null})", "session: the key is missing"},
        {R"({"session": 2, "view": null})", "session: expected the format number 1"},
        {R"({"session": 1})", "view: the key is missing"},
        {view(R"("navSpeed": 1)"), "view.kind: the key is missing"},
        {view(R"("kind": "oilpainting")"), "unknown kind of view \"oilpainting\""},
        {R"({"session": 1, "view": {"kind": "other", "size": [1]}})", "view.size: expected width and height"},
        {R"({"session": 1, "view": {"kind": "other", "size": [1, -2]}})", "view.size[1]: expected a 32-bit integer, 0"},
        {view(R"("kind": "shapeview")"), "view.camera: the key is missing"},
        {view(R"("kind": "imageview")"), "view.width: the key is missing"},
        {view(shape + R"(, "width": 1)"), "view: unknown key \"width\""},
        {view(page + R"(, "camera": )" + Camera), "view: unknown key \"camera\""},
        {view(page + R"(, "u": [1e39, 0, 0])"), "view.u[0]: expected a number in the range"},
        {view(shape + R"(, "bounds": [1, 2, 3])"), "view.bounds: expected null or"},
        {view(shape + R"(, "navSpeed": "Infinity")"), "view.navSpeed: expected a number"},
        {R"({"session": 1, "view": null, "ppi": [96, -1]})", "ppi[1]"},
        {R"({"session": 1, "view": null, "environment": ["A", 2]})", "environment[1]: expected a string"},
        {R"({"session": 1, "view": null, "boundsAnswer": "later"})", "boundsAnswer: expected one of"},
    };
    const std::vector<Row> events = {
        {"{}", "expected an event"},
        {R"({"timer": [1, 2], "statusBar": true})", "found \"timer\" and \"statusBar\""},
        {R"({"timer": [1, 2], "timer": [3, 4]})", "the key \"timer\" stands twice"},
        {R"({"timer": [1, 2], "count": 1})", "unknown key \"count\""},
        {R"({"touch": [)" + eleven + "]}", "touch: expected an array of up to ten records"},
        {R"({"touch": [[1, 2, 3, 4, 5], [1, 2, 3, 4]]})", "touch[1]: expected the five integers"},
        {R"({"touch": [[1, 2, 3.0, 4, 5]]})", "touch[0][2]: expected a 32-bit integer"},
        {R"({"touch": [[1, 2147483648, 3, 4, 5]]})", "touch[0][1]: expected a 32-bit integer"},
        {R"({"timer": [1, 9223372036854775808]})", "timer[1]: expected a 64-bit integer"},
        {R"({"timer": [1]})", "timer: expected the two integers"},
        {R"({"mouse": ["MsgMouseWheel", 1, 2]})", "mouse[0]: unknown mouse message"},
        {R"({"preferences": {"a": null}})", R"(preferences."a": expected true or false)"},
        {R"({"statusBar": false})", "statusBar: expected true"},
        {R"({"viewer": {"camera": {"orthographic": true}}})", "viewer.camera.window: the key"},
        {R"({"timer": [1, 2)", "column 16: expected JSON"},
        {R"({"timer": [1, 2]} x)", "column 19: expected JSON"},
        {R"({"timer": [1e999, 2]})", "the number is too large"},
        {"{\"mode\": [\"touch\", \"\xff\"]}", "UTF-8"},
        {"\xef\xbb\xbf{\"statusBar\": true}", "expected a JSON object"},
        {std::string("{\"statusBar\": true}\0 x", 22), "zero byte"},
        {"{\"touch\": " + std::string(100'000, '['), "nested more than"},
        {R"({"a\nb": 1, "timer": [1, 2]})", R"(unknown key "a\nb")"},
        {"\n" + Header, "empty line"},
    };
    const auto expectFault = [](const std::string& before, const Row& row, const std::string& place) {
        const std::string error = ErrorOf(before + row.text + "\n");
        EXPECT_TRUE(error.starts_with(place)) << error;
        EXPECT_NE(error.find(row.expected), std::string::npos) << error << ", not " << row.expected;
        EXPECT_EQ(error.find('\n'), std::string::npos) << error;
    };
    for (const Row& row : headers) {
        expectFault("", row, "a.jsonl:1: ");
    }
    for (const Row& row : events) {
        expectFault(Header + "\n" + R"({"statusBar": true})" + "\n", row, "a.jsonl:3: ");
    }
}

TEST(SessionReader, LineEndsOfEveryHabitAreTaken) {
    const std::string event = R"({"statusBar": true})";
    for (const std::string& text :
         {Header + "\n" + event, Header + "\r\n" + event + "\r\n", Header + "\n" + event + "\n\n \n"}) {
        EXPECT_EQ(Read(text).events.size(), 1U) << text;
    }
}

TEST(SessionReader, AFileThatCannotBeReadIsNamed) {
    for (const std::string name : {"/nowhere/a.jsonl", "/"}) {
        try {
            (void)replay::ReadSessionFile(name);
            ADD_FAILURE() << name;
        } catch (const replay::ReadError& error) {
            EXPECT_TRUE(std::string(error.what()).starts_with(name + ": cannot be read: ")) << error.what();
        }
    }
}

TEST(SessionWriter, WritesOnlyWhatDiffersFromTheDefaults) {
    Session session;
    session.view.emplace();
    session.view->camera.location.SetPos({0, 0, 20});
    session.view->bounds = {{-2, -2, -2}, {2, 2, 2}};
    session.host.preselectGuard = true;
    replay::TouchEvent touch;
    touch.frame.count = 1;
    touch.frame.records[0] = {7, 640, 400, 5000, 2};
    session.events = {replay::TimerEvent{1000, 10}, touch, replay::MouseEvent{"MsgMouseMove", 644, 401},
                      replay::StatusBarEvent{}};
    EXPECT_EQ(Written(session),
              R"({"session": 1, "view": {"kind": "shapeview", "size": [1280, 800], "camera": {"orthographic": true, )"
              R"("window": [-8, 8, -5, 5], "distance": 1, "u": [1, 0, 0], "v": [0, 1, 0], "w": [0, 0, 1], )"
              R"("position": [0, 0, 20]}, "bounds": [[-2, -2, -2], [2, 2, 2]]}, "preselectGuard": true})"
              "\n"
              R"({"timer": [1000, 10]})"
              "\n"
              R"({"touch": [[7, 640, 400, 5000, 2]]})"
              "\n"
              R"({"mouse": ["MsgMouseMove", 644, 401]})"
              "\n"
              R"({"statusBar": true})"
              "\n");
}

TEST(JsonNumbers, AreShortAndExact) {
    constexpr double Infinity = std::numeric_limits<double>::infinity();
    const std::vector<std::pair<double, const char*>> rows = {{0, "0"},
                                                              {-0.0, "-0.0"},
                                                              {1, "1"},
                                                              {0.1, "0.1"},
                                                              {1e300, "1e+300"},
                                                              {0.30000000000000004, "0.30000000000000004"},
                                                              {NAN, "\"NaN\""},
                                                              {Infinity, "\"Infinity\""},
                                                              {-Infinity, "\"-Infinity\""}};
    for (const auto& [value, text] : rows) {
        EXPECT_EQ(replay::JsonNumber(value), text);
    }
    EXPECT_EQ(replay::JsonNumber(0.1F), "0.1");
    // The one positive float whose shortest text, read as a double and then rounded, gives its neighbour.
    EXPECT_EQ(static_cast<float>(std::stod(replay::JsonNumber(7.038531e-26F))), 7.038531e-26F);
    // The shortest text of the largest float is a double beyond it, which the reader refuses.
    constexpr float Largest = std::numeric_limits<float>::max();
    EXPECT_EQ(std::stod(replay::JsonNumber(Largest)), static_cast<double>(Largest));
    EXPECT_EQ(std::stod(replay::JsonNumber(-Largest)), -static_cast<double>(Largest));
}

}  // namespace
