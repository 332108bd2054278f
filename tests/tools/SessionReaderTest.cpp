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
#include <random>
#include <sstream>
#include <string>
#include <vector>

namespace {

using replay::ReadSession;
using replay::Session;

const std::string Camera = R"({"orthographic": false, "window": [-1, 2, -3, 4], "distance": 5, "u": [0, 1, 0],)"
                           R"( "v": [0, 0, 1], "w": [1, 0, 0], "position": [6, 7, 8]})";
const std::string ShapeView = R"({"kind": "shapeview", "size": [640, 480], "camera": )" + Camera + "}";
const std::string Header = R"({"session": 1, "view": null})";

Session Read(const std::string& text) {
    std::istringstream input(text);
    return ReadSession(input, "a.jsonl");
}

Session ReadOneEvent(const std::string& line) {
    return Read(Header + "\n" + line + "\n");
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

TEST(SessionReader, KeysThatAreLeftOutHaveTheirDefaults) {
    const Session session = Read(R"({"session": 1, "view": )" + ShapeView + "}");
    EXPECT_EQ(session.host, viewer::HostSettings());
    ASSERT_TRUE(session.view.has_value());
    EXPECT_EQ(session.view->spinCenter, dg::DPoint3D(0, 0, 0));
    EXPECT_TRUE(session.view->bounds.IsEmpty());
    EXPECT_EQ(session.view->navMethod, "standard");
    EXPECT_EQ(session.view->navSpeed, 1);
    EXPECT_FALSE(session.view->preferences.has_value());
    EXPECT_TRUE(session.events.empty());

    const Session flat = Read(R"({"session": 1, "view": {"kind": "imageview", "size": [10, 20], "width": 3}})");
    EXPECT_EQ(flat.view->placement, dg::Location());
    EXPECT_FALSE(Read(Header).view.has_value());
}

TEST(SessionReader, EveryKeyOfTheHeaderArrives) {
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
}

TEST(SessionReader, A2DViewHasAWidthAndAPlacement) {
    const Session session = Read(R"({"session": 1, "view": {"kind": "drawingview", "size": [10, 20], "width": 32,)"
                                 R"( "u": [0, 1, 0], "v": [-1, 0, 0], "w": [0, 0, 1], "position": [1, 2, 3]}})");
    EXPECT_EQ(session.view->kind, "drawingview");
    EXPECT_EQ(session.view->orthoWidth, 32);
    EXPECT_EQ(session.view->placement, dg::Location({0, 1, 0}, {-1, 0, 0}, {0, 0, 1}, {1, 2, 3}));
}

TEST(SessionReader, EveryEventArrives) {
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
    viewer::ViewSpec other;
    other.kind = "other";
    other.width = 0;
    other.height = 7;

    struct Row {
        const char* line;
        replay::Event event;
    };
    const std::vector<Row> rows = {
        {R"({"touch": [[7, 640, 400, 5000, 2], [8, -1, 2147483647, -2147483648, 7]]})", replay::TouchEvent{two}},
        {R"({"touch": [[7, 640, 400, 5000, 2]], "count": -3})", replay::TouchEvent{odd}},
        {R"({"touch": []})", replay::TouchEvent{}},
        {R"({"timer": [9223372036854775807, -9223372036854775808]})", replay::TimerEvent{INT64_MAX, INT64_MIN}},
        {R"({"mouse": ["MsgDoubleClickLeft", 5, -6]})", replay::MouseEvent{"MsgDoubleClickLeft", 5, -6}},
        {R"({"mode": ["touch", "enter_markup_mode"]})", replay::ModeEvent{"touch", "enter_markup_mode"}},
        {R"({"preferences": {"x": true}})", replay::PreferencesEvent{{{{"x", true}}}, "touch"}},
        {R"({"preferences": null, "workflow": "picker"})", replay::PreferencesEvent{std::nullopt, "picker"}},
        {R"({"statusBar": true})", replay::StatusBarEvent{}},
        {R"({"setView": null})", replay::SetViewEvent{}},
        {R"({"setView": {"kind": "other", "size": [0, 7]}})", replay::SetViewEvent{other}},
        {R"({"viewer": {"navMethod": "explore", "bounds": null}})", replay::ViewerEvent{change}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.line);
        const Session session = ReadOneEvent(row.line);
        ASSERT_EQ(session.events.size(), 1U);
        EXPECT_EQ(session.events[0], row.event);
    }
}

struct BadRow {
    const char* name;
    std::string text;      // of the line at fault
    std::string expected;  // part of the message
};

TEST(SessionReader, ABadHeaderIsNamed) {
    const auto view = [](const std::string& keys) { return R"({"session": 1, "view": {)" + keys + "}}"; };
    const std::string size = R"("size": [1, 2], )";
    const std::string shape = R"("kind": "shapeview", )" + size;
    const std::string page = R"("kind": "imageview", )" + size;
    const std::vector<BadRow> rows = {
        {"no text", "", "header"},
        {"array", "[1]", "JSON object"},
        {"event first", R"({"timer": [1, 2]})", "unknown key \"timer\""},
        {"no format number", R"({"view": null})", "session: the key is missing"},
        {"other format", R"({"session": 2, "view": null})", "session: expected the format number 1"},
        {"fraction", R"({"session": 1.0, "view": null})", "session: expected a 32-bit integer"},
        {"no view", R"({"session": 1})", "view: the key is missing"},
        {"unknown key", R"({"session": 1, "view": null, "speed": 1})", "unknown key \"speed\""},
        {"view is a number", R"({"session": 1, "view": 1})", "view: expected a view or null"},
        {"no kind", view(R"("size": [1, 2])"), "view.kind: the key is missing"},
        {"unknown kind", view(R"("kind": "oilpainting", "size": [1, 2])"), "unknown kind of view \"oilpainting\""},
        {"no size", view(R"("kind": "other")"), "view.size: the key is missing"},
        {"size of one", view(R"("kind": "other", "size": [1])"), "view.size: expected width and height"},
        {"negative size", view(R"("kind": "other", "size": [1, -2])"), "view.size[1]: expected a 32-bit integer, 0"},
        {"huge size", view(R"("kind": "other", "size": [4294967296, 2])"), "view.size[0]"},
        {"shape view without camera", view(R"("kind": "shapeview", "size": [1, 2])"),
         "view.camera: the key is missing"},
        {"2D view without width", view(R"("kind": "imageview", "size": [1, 2])"), "view.width: the key is missing"},
        {"width of a shape view", view(shape + R"("width": 1, "camera": )" + Camera), "view: unknown key \"width\""},
        {"u of a shape view", view(shape + R"("u": [1, 0, 0], "camera": )" + Camera), "view: unknown key \"u\""},
        {"camera of a 2D view", view(page + R"("width": 1, "camera": )" + Camera), "view: unknown key \"camera\""},
        {"camera of another view", view(R"("kind": "other", "size": [1, 2], "camera": )" + Camera), "\"camera\""},
        {"empty camera", view(shape + R"("camera": {})"), "view.camera.orthographic: the key is missing"},
        {"width as text", view(page + R"("width": "wide")"), "view.width: expected a number"},
        {"axis out of range", view(page + R"("width": 1, "u": [1e39, 0, 0])"),
         "view.u[0]: expected a number in the range"},
        {"bounds of three", view(shape + R"("bounds": [1, 2, 3], "camera": )" + Camera),
         "view.bounds: expected null or"},
        {"flat corner", view(shape + R"("bounds": [[1, 2], [1, 2]], "camera": )" + Camera), "view.bounds[0]: expected"},
        {"method as a number", view(shape + R"("navMethod": 1, "camera": )" + Camera),
         "view.navMethod: expected a string"},
        {"infinite speed", view(shape + R"("navSpeed": "Infinity", "camera": )" + Camera),
         "view.navSpeed: expected a number"},
        {"preference as a number", view(page + R"("width": 1, "preferences": {"a": 1})"),
         R"(view.preferences."a": expected true)"},
        {"negative ppi", R"({"session": 1, "view": null, "ppi": [96, -1]})", "ppi[1]"},
        {"one ppi", R"({"session": 1, "view": null, "ppi": 96})", "ppi: expected"},
        {"switch as a number", R"({"session": 1, "view": null, "environment": ["A", 2]})",
         "environment[1]: expected a string"},
        {"guard as a number", R"({"session": 1, "view": null, "preselectGuard": 1})",
         "preselectGuard: expected true or false"},
        {"unknown answer", R"({"session": 1, "view": null, "boundsAnswer": "later"})", "boundsAnswer: expected one of"},
    };
    for (const BadRow& row : rows) {
        SCOPED_TRACE(row.name);
        const std::string error = ErrorOf(row.text + "\n");
        EXPECT_TRUE(error.starts_with("a.jsonl:1: ")) << error;
        EXPECT_NE(error.find(row.expected), std::string::npos) << error;
    }
}

TEST(SessionReader, ABadEventIsNamed) {
    std::string eleven = "[0, 0, 0, 0, 0]";
    for (int i = 0; i < 10; ++i) {
        eleven += ", [0, 0, 0, 0, 0]";
    }
    const std::vector<BadRow> rows = {
        {"second header", Header, "expected an event"},
        {"no key", "{}", "expected an event"},
        {"two events", R"({"timer": [1, 2], "statusBar": true})", "found \"timer\" and \"statusBar\""},
        {"same key twice", R"({"timer": [1, 2], "timer": [3, 4]})", "the key \"timer\" stands twice"},
        {"foreign key", R"({"timer": [1, 2], "count": 1})", "unknown key \"count\""},
        {"eleven records", R"({"touch": [)" + eleven + "]}", "touch: expected an array of up to ten records"},
        {"record of four", R"({"touch": [[1, 2, 3, 4, 5], [1, 2, 3, 4]]})", "touch[1]: expected the five integers"},
        {"record of six", R"({"touch": [[1, 2, 3, 4, 5, 6]]})", "touch[0]: expected the five integers"},
        {"fraction", R"({"touch": [[1, 2, 3.0, 4, 5]]})", "touch[0][2]: expected a 32-bit integer"},
        {"33 bits", R"({"touch": [[1, 2147483648, 3, 4, 5]]})", "touch[0][1]: expected a 32-bit integer"},
        {"33 bits below", R"({"touch": [[1, 2, 3, -2147483649, 5]]})", "touch[0][3]: expected a 32-bit integer"},
        {"count as text", R"({"touch": [], "count": "2"})", "count: expected a 32-bit integer"},
        {"65 bits", R"({"timer": [1, 9223372036854775808]})", "timer[1]: expected a 64-bit integer"},
        {"one tick number", R"({"timer": [1]})", "timer: expected the two integers"},
        {"unknown mouse message", R"({"mouse": ["MsgMouseWheel", 1, 2]})", "mouse[0]: unknown mouse message"},
        {"mouse without place", R"({"mouse": ["MsgMouseMove", 1]})", "mouse: expected [message type, x, y]"},
        {"mode without workflow", R"({"mode": ["enter_markup_mode"]})", "mode: expected"},
        {"preference as null", R"({"preferences": {"a": null}})", R"(preferences."a": expected true or false)"},
        {"preferences as array", R"({"preferences": []})", "preferences: expected an object"},
        {"workflow as a number", R"({"preferences": null, "workflow": 1})", "workflow: expected a string"},
        {"status bar false", R"({"statusBar": false})", "statusBar: expected true"},
        {"view without size", R"({"setView": {"kind": "imageview", "width": 1}})", "setView.size: the key is missing"},
        {"change of kind", R"({"viewer": {"kind": "shapeview"}})", "viewer: unknown key \"kind\""},
        {"change to null", R"({"viewer": null})", "viewer: expected an object"},
        {"change to half a camera", R"({"viewer": {"camera": {"orthographic": true}}})",
         "viewer.camera.window: the key"},
        {"no JSON", R"({"timer": [1, 2)", "column 16: expected JSON"},
        {"text behind", R"({"timer": [1, 2]} x)", "column 19: expected JSON"},
        {"comment behind", R"({"timer": [1, 2]} // x)", "expected JSON"},
        {"number too large", R"({"timer": [1e999, 2]})", "the number is too large"},
        {"not a number", R"({"timer": [NaN, 2]})", "expected JSON"},
        {"not UTF-8", "{\"mode\": [\"touch\", \"\xff\"]}", "UTF-8"},
        {"byte order mark", "\xef\xbb\xbf{\"statusBar\": true}", "expected a JSON object"},
        {"zero byte", std::string("{\"statusBar\": true}\0 x", 22), "zero byte"},
        {"deep nesting", "{\"touch\": " + std::string(100'000, '['), "nested more than"},
        {"line break in a key", R"({"a\nb": 1, "timer": [1, 2]})", R"(unknown key "a\nb")"},
        {"empty line between", "\n" + Header, "empty line"},
    };
    for (const BadRow& row : rows) {
        SCOPED_TRACE(row.name);
        const std::string error = ErrorOf(Header + "\n" + R"({"statusBar": true})" + "\n" + row.text + "\n");
        EXPECT_TRUE(error.starts_with("a.jsonl:3: ")) << error;
        EXPECT_NE(error.find(row.expected), std::string::npos) << error;
        EXPECT_EQ(error.find('\n'), std::string::npos) << error;
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

TEST(SessionReader, ZeroKeepsItsSignAndNumbersTheirLastBit) {
    const Session session = ReadOneEvent(R"({"viewer": {"spinCenter": [-0, -0.0, 0.1], "navSpeed": 5e-324}})");
    const auto& change = std::get<replay::ViewerEvent>(session.events[0]).change;
    EXPECT_TRUE(std::signbit(change.spinCenter->x));
    EXPECT_TRUE(std::signbit(change.spinCenter->y));
    EXPECT_EQ(change.spinCenter->z, 0.1);
    EXPECT_EQ(*change.navSpeed, std::numeric_limits<double>::denorm_min());
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

// Sessions whose every value is drawn at random, also in the ways that a default would hide.
class SessionMaker {
public:
    explicit SessionMaker(std::uint32_t seed) : m_random(seed) {}

    Session Make() {
        Session session;
        session.host = {Below(500), Below(2), {}, Coin(), static_cast<viewer::BoundsAnswer>(Below(4)), Coin()};
        for (int i = Below(3); i > 0; --i) {
            session.host.environment.push_back(Text());
        }
        session.view = View();
        for (int i = 0; i < 40; ++i) {
            session.events.push_back(Event());
        }
        return session;
    }

private:
    int Below(int end) { return static_cast<int>(m_random() % static_cast<std::uint32_t>(end)); }
    bool Coin() { return Below(2) == 1; }
    std::int32_t Int() { return static_cast<std::int32_t>(m_random()); }
    std::int64_t Long() {
        return static_cast<std::int64_t>((static_cast<std::uint64_t>(m_random()) << 32) | m_random());
    }
    double Double() { return Coin() ? Below(100) : std::ldexp(static_cast<double>(Long()), Below(1000) - 600); }
    float Float() {
        return Coin() ? static_cast<float>(Below(3)) : std::ldexp(static_cast<float>(Int()), Below(60) - 50);
    }
    std::string Text() {
        return std::vector<std::string>{"", "plain", "a \"b\" \\c", "line\nbreak",
                                        "Maß"}[static_cast<std::size_t>(Below(5))];
    }
    dg::DPoint3D Point() { return {Double(), Double(), Double()}; }
    dg::FVec3 Axis() { return {Float(), Float(), Float()}; }
    dg::Location Location() { return {Axis(), Axis(), Axis(), Point()}; }
    dg::DBox Box() { return Coin() ? dg::DBox() : dg::DBox(Point(), Point()); }
    viewer::CameraSpec Camera() { return {Coin(), Double(), Double(), Double(), Double(), Double(), Location()}; }

    std::optional<viewer::PreferenceValues> Preferences() {
        if (Coin()) {
            return std::nullopt;
        }
        viewer::PreferenceValues values;
        for (int i = Below(3); i > 0; --i) {
            values[Text()] = Coin();
        }
        return values;
    }

    std::optional<viewer::ViewSpec> View() {
        if (Below(4) == 0) {
            return std::nullopt;
        }
        viewer::ViewSpec view;
        view.kind = viewer::ViewKinds.at(static_cast<std::size_t>(Below(8)));
        view.width = static_cast<std::uint32_t>(m_random());
        view.height = static_cast<std::uint32_t>(m_random());
        view.preferences = Preferences();
        if (viewer::IsShapeViewKind(view.kind)) {
            view.camera = Camera();
            view.spinCenter = Point();
            view.bounds = Box();
            view.navMethod = Text();
            view.navSpeed = Double();
        } else if (viewer::Is2DViewKind(view.kind)) {
            view.orthoWidth = Double();
            view.placement = Coin() ? dg::Location() : Location();
        }
        return view;
    }

    replay::TouchEvent Touch() {
        replay::TouchEvent event;
        event.frame.count = Coin() ? 2 : Int();
        for (int i = Below(11); i > 0; --i) {
            event.frame.records.at(static_cast<std::size_t>(Below(10))) = {Int(), Int(), Int(), Int(), Below(8)};
        }
        return event;
    }

    replay::ViewerEvent Change() {
        viewer::ViewChange change;
        const auto maybe = [this](auto& member, const auto& value) {
            if (Coin()) {
                member = value;
            }
        };
        maybe(change.camera, Camera());
        maybe(change.spinCenter, Point());
        maybe(change.bounds, Box());
        maybe(change.navMethod, Text());
        maybe(change.navSpeed, Double());
        return {change};
    }

    replay::Event Event() {
        switch (Below(8)) {
        case 0: return Touch();
        case 1: return replay::TimerEvent{Long(), Long()};
        case 2:
            return replay::MouseEvent{std::string(replay::MouseMessageNames.at(static_cast<std::size_t>(Below(13)))),
                                      Int(), Int()};
        case 3: return replay::ModeEvent{Text(), Text()};
        case 4: return replay::PreferencesEvent{Preferences(), Text()};
        case 5: return replay::StatusBarEvent{};
        case 6: return replay::SetViewEvent{View()};
        default: return Change();
        }
    }

    std::mt19937 m_random;
};

TEST(SessionWriter, WhatIsWrittenReadsBackEqual) {
    for (std::uint32_t seed = 1; seed <= 100; ++seed) {
        const Session session = SessionMaker(seed).Make();
        const std::string text = Written(session);
        ASSERT_EQ(Read(text), session) << "seed " << seed << "\n" << text;
        ASSERT_EQ(Written(Read(text)), text) << "seed " << seed;
    }
}

// Any damage to a session gives a session or one error, and nothing else.
TEST(SessionReader, DamagedSessionsGiveASessionOrAnError) {
    std::mt19937 random(7);
    const std::string good = Written(SessionMaker(3).Make());
    int errors = 0;
    for (int round = 0; round < 3000; ++round) {
        std::string text = good.substr(0, 4000);
        for (auto i = 1 + random() % 3; i > 0; --i) {
            text[random() % text.size()] = static_cast<char>(random());
        }
        errors += ErrorOf(text).starts_with("a.jsonl:") ? 1 : 0;
    }
    EXPECT_GT(errors, 2000);
}

TEST(JsonNumbers, AreShortAndExact) {
    struct Row {
        double value;
        const char* text;
    };
    const std::vector<Row> rows = {{0, "0"},
                                   {-0.0, "-0.0"},
                                   {1, "1"},
                                   {0.1, "0.1"},
                                   {-1234.5, "-1234.5"},
                                   {1e300, "1e+300"},
                                   {0.30000000000000004, "0.30000000000000004"},
                                   {std::numeric_limits<double>::quiet_NaN(), "\"NaN\""},
                                   {std::numeric_limits<double>::infinity(), "\"Infinity\""},
                                   {-std::numeric_limits<double>::infinity(), "\"-Infinity\""}};
    for (const Row& row : rows) {
        EXPECT_EQ(replay::JsonNumber(row.value), row.text);
    }
    EXPECT_EQ(replay::JsonNumber(0.1F), "0.1");
    EXPECT_EQ(replay::JsonNumber(std::numeric_limits<float>::infinity()), "\"Infinity\"");
    // The one positive float whose shortest text, read as a double and then rounded, gives its neighbour.
    EXPECT_EQ(static_cast<float>(std::stod(replay::JsonNumber(7.038531e-26F))), 7.038531e-26F);
}

}  // namespace
