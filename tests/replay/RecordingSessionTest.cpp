// Recordings as sessions: what the host sends for the fingers of a device, and when.
#include "replay/recording/RecordingSession.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <variant>
#include <vector>

namespace {

using replay::Contact;
using replay::Recording;
using replay::RecordingOptions;
using replay::Session;

// A device of 1000 x 500 units, so that in a view of 1000 x 500 pixels every unit is a pixel.
Recording Device(const std::vector<replay::Report>& reports) {
    return {"pad", {0, 999, std::nullopt}, {0, 499, std::nullopt}, replay::ReportList(reports)};
}

replay::ReportList OneFinger(std::int32_t x, std::int32_t y) {
    replay::ReportList reports;
    reports.Add({0, {{0, 7, x, y}}});
    return reports;
}

RecordingOptions PixelView() {
    RecordingOptions options;
    options.width = 1000;
    options.height = 500;
    options.feeding = input::Feeding::EveryReport;
    return options;
}

// The frames of a session, in short: "time: id flags, ..." with D, M and U for down, move and up.
std::vector<std::string> Frames(const Session& session) {
    std::vector<std::string> frames;
    for (const replay::Event& event : session.events) {
        if (const auto* touch = std::get_if<replay::TouchEvent>(&event)) {
            std::string text = std::to_string(touch->frame.records[0].time) + ":";
            for (int i = 0; i < touch->frame.count; ++i) {
                const workflow::TouchRecord& record = touch->frame.records.at(static_cast<std::size_t>(i));
                const char* flag = record.flags == workflow::TouchDown   ? "D"
                                   : record.flags == workflow::TouchMove ? "M"
                                   : record.flags == workflow::TouchUp   ? "U"
                                                                         : "?";
                text += " " + std::to_string(record.id) + flag;
                EXPECT_EQ(record.time, touch->frame.records[0].time);
            }
            frames.push_back(text);
        }
    }
    return frames;
}

std::vector<std::string> FramesOf(const std::vector<replay::Report>& reports) {
    return Frames(SessionFromRecording(Device(reports), PixelView()));
}

using Lines = std::vector<std::string>;

TEST(RecordingSession, FramesFollowTheFingers) {
    const Contact a{0, 7, 100, 100};
    const Contact aMoved{0, 7, 105, 100};
    const Contact b{1, 8, 200, 100};
    const Contact newInSlot{0, 9, 300, 100};
    struct Row {
        const char* name;
        std::vector<replay::Report> reports;
        Lines frames;
    };
    const std::vector<Row> rows = {
        {"a lift keeps the count of its frame",
         {{0, {a, b}}, {5000, {b}}, {9000, {}}},
         {"1000: 7D 8D", "1005: 7U 8M", "1009: 8U"}},
        {"who landed first comes first",
         {{0, {b}}, {5000, {a, b}}, {6000, {}}},
         {"1000: 8D", "1005: 8M 7D", "1006: 8U 7U"}},
        {"one finger for another in a slot",
         {{0, {a, b}}, {5000, {newInSlot, b}}, {6000, {}}},
         {"1000: 7D 8D", "1005: 7U 8M 9D", "1006: 8U 9U"}},
        {"resting fingers are sent on the ticks",
         {{0, {a}}, {33000, {aMoved}}, {34000, {}}},
         {"1000: 7D", "1010: 7M", "1020: 7M", "1030: 7M", "1033: 7M", "1034: 7U"}},
        {"reports without news are silence",
         {{0, {a}}, {5000, {a}}, {10000, {a}}, {20000, {a}}, {25000, {}}},
         {"1000: 7D", "1010: 7M", "1020: 7M", "1025: 7U"}},
        {"no repetition right after a report",
         {{0, {a}}, {18000, {aMoved}}, {29000, {}}},
         {"1000: 7D", "1010: 7M", "1018: 7M", "1029: 7U"}},
        {"nothing is sent without fingers",
         {{0, {}}, {50000, {a}}, {51000, {}}, {90000, {}}},
         {"1050: 7D", "1051: 7U"}},
        {"no lift at the end of the recording", {{0, {a}}, {12000, {aMoved}}}, {"1000: 7D", "1010: 7M", "1012: 7M"}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(FramesOf(row.reports), row.frames);
    }
    RecordingOptions options = PixelView();
    options.feeding = input::Feeding::FixedStep;
    EXPECT_EQ(Frames(SessionFromRecording(Device({{0, {a}}, {4000, {a, b}}, {25000, {a}}, {34000, {}}}), options)),
              Lines({"1000: 7D", "1004: 7M 8D", "1025: 7M 8U", "1030: 7M", "1034: 7U"}));
}

TEST(RecordingSession, ALiftRepeatsTheLastPlace) {
    const Session session = SessionFromRecording(Device({{0, {{0, 7, 110, 120}}}, {5000, {}}}), PixelView());
    // Device rows count downward, view rows upward: 499 - 120 = 379.
    EXPECT_EQ(std::get<replay::TouchEvent>(session.events.at(1)).frame.records[0],
              (workflow::TouchRecord{7, 110, 379, 1000, workflow::TouchDown}));
    EXPECT_EQ(std::get<replay::TouchEvent>(session.events.at(2)).frame.records[0],
              (workflow::TouchRecord{7, 110, 379, 1005, workflow::TouchUp}));
}

TEST(RecordingSession, TicksComeEveryTenMillisecondsBeforeFramesAndAfterTheLast) {
    const Session session =
        SessionFromRecording(Device({{0, {{0, 7, 1, 1}}}, {20000, {{0, 7, 2, 2}}}, {25000, {}}}), PixelView());
    std::int64_t now = 990;
    for (const replay::Event& event : session.events) {
        if (const auto* tick = std::get_if<replay::TimerEvent>(&event)) {
            EXPECT_EQ(*tick, (replay::TimerEvent{now + 10, 10}));
            now = tick->now;
        } else {
            // Both clocks count from the same start, so a frame belongs to the tick that has just come.
            const std::int64_t time = std::get<replay::TouchEvent>(event).frame.records[0].time;
            EXPECT_TRUE(time >= now && time < now + 10) << time << " after the tick " << now;
        }
    }
    EXPECT_TRUE(std::holds_alternative<replay::TimerEvent>(session.events.front()));
    EXPECT_GE(now, 1025 + 600);
    EXPECT_LT(now, 1025 + 620);
}

TEST(RecordingSession, TheDeviceFillsTheViewWithoutPixelZero) {
    struct Row {
        std::int32_t x, y;  // device units
        std::int32_t pixelX, pixelY;
    };
    constexpr std::int32_t Most = 2147483647;
    for (const Row& row : {Row{-100, 0, 1, 799}, Row{32667, 32767, 1279, 1}, Row{16283, 16384, 639, 399},
                           Row{Most, -Most - 1, 1279, 799}, Row{-Most - 1, Most, 1, 1}}) {
        SCOPED_TRACE(row.x);
        const Recording recording{"screen", {-100, 32667, 595.0}, {0, 32767, 334.0}, OneFinger(row.x, row.y)};
        const Session session = SessionFromRecording(recording, {});
        const auto& record = std::get<replay::TouchEvent>(session.events.at(1)).frame.records[0];
        EXPECT_EQ(record.x, row.pixelX);
        EXPECT_EQ(record.y, row.pixelY);
        EXPECT_EQ(session.host.ppiX, 55);  // 1280 pixels on 595 mm
        EXPECT_EQ(session.host.ppiY, 61);  // 800 pixels on 334 mm
    }
    EXPECT_EQ(SessionFromRecording(Device({}), {}).host, viewer::HostSettings());
    const Recording wall{"wall", {0, 9, 1e9}, {0, 9, 1e-300}, {}};
    EXPECT_EQ(SessionFromRecording(wall, {}).host.ppiX, 1);
    EXPECT_GT(SessionFromRecording(wall, {}).host.ppiY, 1);
}

TEST(RecordingSession, APanelMayBeMountedAnotherWay) {
    struct Row {
        const char* name;
        replay::Mounting mounting;
        input::Pixel pixel;
        int ppiX, ppiY;
    };
    const Row rows[] = {
        {"as it is", {}, {200, 450}, 100, 100},
        {"columns from the right", {true, false, 0}, {800, 450}, 100, 100},
        {"rows from the bottom", {false, true, 0}, {200, 50}, 100, 100},
        {"its top at the right", {false, false, 90}, {900, 400}, 200, 50},
        {"its top below", {false, false, 180}, {800, 50}, 100, 100},
        {"its top at the left", {false, false, 270}, {100, 100}, 200, 50},
        {"flipped, then turned", {true, false, 90}, {900, 100}, 200, 50},
    };
    const Recording recording{"panel", {0, 1000, 254.0}, {0, 500, 127.0}, OneFinger(200, 50)};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        RecordingOptions options;
        options.mounting = row.mounting;
        options.width = 1001;
        options.height = 501;
        const Session session = SessionFromRecording(recording, options);
        const auto& record = std::get<replay::TouchEvent>(session.events.at(1)).frame.records[0];
        EXPECT_EQ((input::Pixel{record.x, record.y}), row.pixel);
        EXPECT_EQ(session.host.ppiX, row.ppiX);
        EXPECT_EQ(session.host.ppiY, row.ppiY);
    }
}

TEST(RecordingSession, CamerasShowTheWholeModelWithZUp) {
    for (const auto& [orthographic, portrait] : {std::pair{true, false}, {false, false}, {true, true}, {false, true}}) {
        RecordingOptions options = PixelView();
        options.orthographic = orthographic;
        if (portrait) {
            std::swap(options.width, options.height);
        }
        options.bounds = {{0, 0, 0}, {2, 4, 6}};
        const Session session = SessionFromRecording(Device({}), options);
        const viewer::CameraSpec& camera = session.view->camera;
        EXPECT_EQ(session.view->spinCenter, dg::DPoint3D(1, 2, 3));
        EXPECT_EQ(camera.orthographic, orthographic);
        EXPECT_DOUBLE_EQ((camera.right - camera.left) / (camera.top - camera.bottom), portrait ? 0.5 : 2);

        const dg::DVec3 u(camera.location.GetU());
        const dg::DVec3 v(camera.location.GetV());
        const dg::DVec3 w(camera.location.GetW());
        EXPECT_NEAR(dg::DotProduct(dg::CrossProduct(u, v), w), 1, 1e-6);
        EXPECT_NEAR(u.NormSquared() + v.NormSquared() + w.NormSquared(), 3, 1e-6);
        EXPECT_NEAR(u.z, 0, 1e-6);  // the horizon is level
        EXPECT_GT(v.z, 0.5);
        const dg::DVec3 toCamera = camera.location.GetPos() - session.view->spinCenter;
        EXPECT_NEAR(dg::Angle(toCamera, w), 0, 1e-6);
        // A ball of radius 3 about the middle is inside the window, and fills more than half of its smaller side.
        const double halfWindow = std::min(camera.top, camera.right) * (orthographic ? 1 : toCamera.Norm());
        EXPECT_GT(halfWindow, 3);
        EXPECT_LT(halfWindow, 6);
    }
}

}  // namespace
