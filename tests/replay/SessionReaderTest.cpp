// Reading and writing sessions: every key, every kind of fault, and the round trip.
#include "replay/session/SessionReader.h"
#include "replay/files/InputFile.h"
#include "replay/files/ReadError.h"
#include "replay/session/JsonNumbers.h"
#include "replay/session/SessionWriter.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace {

using replay::ReadSession;
using replay::Session;

const std::string Camera = R"({"orthographic": false, "window": [-1, 2, -3, 4], "distance": 5, "u": [0, 1, 0], )"
                           R"("v": [0, 0, 1], "w": [1, 0, 0], "position": [6, 7, 8]})";
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

// What the keys do is seen in the recorded sessions; here none gets lost, and none stands there that has its default.
TEST(SessionReader, WhatIsReadIsWrittenTheSame) {
    const std::string shape = R"({"kind": "shapeview", "size": [640, 480], "camera": )" + Camera;
    const std::string headers[] = {
        Header,
        R"({"session": 1, "view": )" + shape + "}}",
        R"({"session": 1, "view": )" + shape +
            R"(, "spinCenter": [1, 2, 3], "bounds": [[-1, -2, -3], [4, 5, 6]], "navMethod": "explore", )"
            R"("navSpeed": 2.5, "preferences": {"a/b": true, "c": false}}, "ppi": [120, 0], )"
            R"("environment": ["ONE", "TWO"], "preselectGuard": true, "boundsAnswer": "never", )"
            R"("playTransitions": false})",
    };
    const std::string events[] = {
        R"({"touch": [[7, 640, 400, 5000, 2], [8, -1, 2147483647, -2147483648, 7]]})",
        R"({"touch": [[7, 640, 400, 5000, 2]], "count": -3})",
        R"({"touch": []})",
        R"({"timer": [9223372036854775807, -9223372036854775808]})",
        R"({"mouse": ["MsgDoubleClickLeft", 5, -6]})",
        R"({"mode": ["touch", "a \"b\" \\c\nMaß"]})",
        R"({"preferences": {"x": true}})",
        R"({"preferences": null, "workflow": "picker"})",
        R"({"statusBar": true})",
        R"({"setView": null})",
        R"({"setView": {"kind": "other", "size": [0, 4294967295]}})",
        R"({"setView": {"kind": "drawingview", "size": [10, 20], "width": 32}})",
        R"({"setView": {"kind": "drawingview", "size": [10, 20], "width": 32, "u": [0, 1, 0], "v": [-1, 0, 0], )"
        R"("w": [0, 0, 1], "position": [1, 2, 3]}})",
        R"({"viewer": {"bounds": null, "navMethod": "explore"}})",
        R"({"viewer": {"camera": )" + Camera +
            R"(, "spinCenter": [-0.0, 0.1, 5e-324], )"
            R"("navSpeed": 0.30000000000000004}})",
    };
    for (const std::string& header : headers) {
        EXPECT_EQ(Written(Read(header)), header + "\n");
    }
    for (const std::string& event : events) {
        EXPECT_EQ(Written(Read(Header + "\n" + event)), Header + "\n" + event + "\n");
    }
    const Session full = Read(headers[2]);
    EXPECT_EQ(full.host.ppiX, 120);
    EXPECT_FALSE(full.host.playTransitions);
    EXPECT_EQ(full.view->navSpeed, 2.5);
    EXPECT_EQ(Read(Header), Session());
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
            const replay::InputFile input(name);
            ADD_FAILURE() << name;
        } catch (const replay::ReadError& error) {
            EXPECT_TRUE(std::string(error.what()).starts_with(name + ": cannot be read: ")) << error.what();
        }
    }
}

TEST(JsonNumbers, AreShortAndExact) {
    constexpr double Infinity = std::numeric_limits<double>::infinity();
    for (const auto& [value, text] : {std::pair{0.0, "0"},
                                      {-0.0, "-0.0"},
                                      {0.1, "0.1"},
                                      {1e300, "1e+300"},
                                      {NAN, "\"NaN\""},
                                      {Infinity, "\"Infinity\""},
                                      {-Infinity, "\"-Infinity\""}}) {
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
