// Reading device recordings: slots, tracking ids, gaps, fingers that were there before, both protocols, and faults.
#include "replay/recording/RecordingReader.h"
#include "replay/files/ReadError.h"
#include "replay/recording/EvemuText.h"
#include "replay/recording/SlotTracker.h"

#include <evemu.h>
#include <gtest/gtest.h>
#include <linux/input-event-codes.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <set>
#include <sstream>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace replay {

// How a failing test shows a finger.
void PrintTo(const Contact& c, std::ostream* out) {
    *out << "slot " << c.slot << " id " << c.trackingId << " at " << c.x << "," << c.y;
}

}  // namespace replay

namespace {

using replay::Contact;
using replay::FirstInventedId;
using replay::Recording;
using replay::Report;

const std::string Start = "# EVEMU 1.3\nN: pad\nI: 0018 0000 0000 0000\nP: 02 00\nB: 00 0b\n";
const std::string Axes =
    "A: 00 0 999 0 0 0\nA: 01 0 499 0 0 0\nA: 2f 0 9 0 0 0\nA: 35 0 999 0 0 10\nA: 36 -100 399 0 0 5\n"
    "A: 39 0 65535 0 0 0\n";
const std::string AxesA = "A: 35 0 9600 0 0\nA: 36 0 7200 0 0\n";

// Events in short: "s1" slot, "i5" tracking id, "x10", "y20", "X10" and "Y20" the pointer, "t0" the touch button, "m"
// end of a protocol A contact, "d" lost events, "r" end of report, ">10" lets 10 ms pass.
std::string Events(const std::string& script) {
    std::istringstream words(script);
    std::string text;
    int ms = 0;
    for (std::string word; words >> word;) {
        const std::string value = word.size() > 1 ? word.substr(1) : "0";
        const auto add = [&](const std::string& typeAndCode) {
            const std::string digits = std::to_string(1000 + ms % 1000).substr(1);
            text += "E: " + std::to_string(5 + ms / 1000) + "." + digits + "000 " + typeAndCode + " " + value + "\n";
        };
        switch (word[0]) {
        case 's': add("0003 002f"); break;
        case 'i': add("0003 0039"); break;
        case 'x': add("0003 0035"); break;
        case 'y': add("0003 0036"); break;
        case 'X': add("0003 0000"); break;
        case 'Y': add("0003 0001"); break;
        case 't': add("0001 014a"); break;
        case 'm': add("0000 0002"); break;
        case 'd': add("0000 0003"); break;
        case 'r': add("0000 0000"); break;
        case '>': ms += std::stoi(value); break;
        default: ADD_FAILURE() << "unknown word " << word;
        }
    }
    return text;
}

Recording Read(const std::string& text, const std::string& device = {}) {
    std::istringstream input(text);
    return replay::ReadRecording(input, "r.evemu", device);
}

// What libinput writes of the same device and events. It tells no initial values.
std::string AsLibinput(const std::string& evemu, const std::string& name = "pad", const std::string& node = "event5") {
    std::string axes;
    std::string events;
    std::istringstream lines(evemu);
    for (std::string line; std::getline(lines, line);) {
        std::istringstream words(line.substr(0, line.find('\t')));
        std::string kind;
        words >> kind >> std::hex;
        if (kind == "A:") {
            int code = 0;
            int minimum = 0, maximum = 0, fuzz = 0, flat = 0, resolution = 0;
            words >> code >> std::dec >> minimum >> maximum >> fuzz >> flat >> resolution;
            axes += "      " + std::to_string(code) + ": [";
            for (const int value : {minimum, maximum, fuzz, flat}) {
                axes += std::to_string(value) + ", ";
            }
            axes += std::to_string(resolution) + "]\n";
        } else if (kind == "E:") {
            int seconds = 0, microseconds = 0, type = 0, code = 0, value = 0;
            char point = 0;
            words >> std::dec >> seconds >> point >> microseconds >> std::hex >> type >> code >> std::dec >> value;
            events += "  - evdev:\n    - [" + std::to_string(seconds) + ", " + std::to_string(microseconds);
            events +=
                ", " + std::to_string(type) + ", " + std::to_string(code) + ", " + std::to_string(value) + "] # -\n";
        }
    }
    return "- node: " + node + "\n  evdev:\n    # Name: x\n    name: \"" + name +
           "\"\n    id: [3, 1, 2, 3]\n    codes:\n" + "      3: [53, 54] # EV_ABS\n    absinfo:\n" + axes +
           "    properties: []\n  hid: []\n  events:\n" + events +
           "  - libinput:\n    - {time: 1.2, type: TOUCH_FRAME}\n";
}
const std::string LibinputStart =
    "# libinput record\nversion: 1\nndevices: 1\nlibinput:\n  version: \"1.22\"\ndevices:\n";

using Fingers = std::vector<std::vector<Contact>>;

Fingers FingersOf(const Recording& recording) {
    Fingers fingers;
    for (const Report& report : recording.reports) {
        fingers.push_back(report.contacts);
    }
    return fingers;
}

TEST(RecordingReader, FollowsTheSlotsOfAProtocolBDevice) {
    const std::string values =
        "# Supported events:\n#   Event type 3 (EV_ABS)\n#     Event code 0 (ABS_X)\n#       Value 70\n"
        "#     Event code 1 (ABS_Y)\n#       Value 80\n#     Event code 47 (ABS_MT_SLOT)\n#       Value 3\n";
    constexpr std::int32_t Old = FirstInventedId;
    struct Row {
        const char* name;
        const char* script;
        Fingers fingers;
        std::string description = {};
    };
    const Fingers heldAndMoved(3, {{0, Old, 3, 4}, {1, 5, 1, 2}});
    const std::vector<Row> rows = {
        {"unchanged values stay",
         "i5 x1 y2 r y3 r r x4 r",
         {{{0, 5, 1, 2}}, {{0, 5, 1, 3}}, {{0, 5, 1, 3}}, {{0, 5, 4, 3}}}},
        {"values are for the current slot",
         "i5 x1 y2 s1 i6 x3 y4 r y9 r s0 y8 r",
         {{{0, 5, 1, 2}, {1, 6, 3, 4}}, {{0, 5, 1, 2}, {1, 6, 3, 9}}, {{0, 5, 1, 8}, {1, 6, 3, 9}}}},
        {"slots in order", "s4 i5 x1 y2 r s2 i6 x3 y4 r", {{{4, 5, 1, 2}}, {{2, 6, 3, 4}, {4, 5, 1, 2}}}},
        {"next finger keeps the old place", "i5 x1 y2 r i-1 r i6 y7 r", {{{0, 5, 1, 2}}, {}, {{0, 6, 1, 7}}}},
        {"coordinates of nobody", "i5 x1 y2 r i-1 r x3 y4 r", {{{0, 5, 1, 2}}, {}, {}}},
        {"another id without a lift", "i5 x1 y2 r i6 x3 y4 r", {{{0, 5, 1, 2}}, {{0, 6, 3, 4}}}},
        {"id behind the coordinates", "x1 y2 i5 r", {{{0, 5, 1, 2}}}},
        {"the slot at the start", "i5 x1 y2 r s0 i6 x3 y4 r", {{{3, 5, 1, 2}}, {{0, 6, 3, 4}, {3, 5, 1, 2}}}, values},
        {"missing coordinate is the pointer's", "i5 x1 r", {{{3, 5, 1, 80}}}, values},
        {"pointer that moved", "i5 X8 Y9 r", {{{3, 5, 8, 9}}}, values},
        {"down before the start, moving", "x1 y2 r x3 r i-1 r", {{{0, Old, 1, 2}}, {{0, Old, 3, 2}}, {}}},
        {"down before the start, moving late", "s1 i5 x1 y2 r s0 x3 r y4 r", heldAndMoved},
        {"down before the start, then replaced", "x1 y2 r i5 r", {{{0, Old, 1, 2}}, {{0, 5, 1, 2}}}},
        {"down before the start, only lifted", "r i-1 r", {{{3, Old, 70, 80}}, {}}, values},
        {"lift without a place", "r i-1 r", {{}, {}}},
        {"lost events", "i5 x1 y2 r x3 d x4 i-1 r y6 r", {{{0, 5, 1, 2}}, {{0, 5, 3, 6}}}},
        {"slot chosen in a gap", "i5 x1 y2 r d s1 i6 r x8 y9 r", {{{0, 5, 1, 2}}, {{0, 5, 1, 2}, {1, Old, 8, 9}}}},
        {"lifts lost in a gap, and the button afterwards",
         "t1 i5 x1 y2 s1 i6 x3 y4 r d r t0 r i7 x8 y9 r t0 r",
         {{{0, 5, 1, 2}, {1, 6, 3, 4}}, {}, {{1, 7, 8, 9}}, {{1, 7, 8, 9}}}},
        {"a lift, and a landing lost in a gap", "i5 x1 y2 r i-1 d i6 r x8 y9 r", {{{0, 5, 1, 2}}, {{0, Old, 8, 9}}}},
        {"button without a gap says nothing", "t1 i5 x1 y2 r t0 r", {{{0, 5, 1, 2}}, {{0, 5, 1, 2}}}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(FingersOf(Read(Start + row.description + Axes + Events(row.script))), row.fingers);
        if (row.description.empty()) {
            EXPECT_EQ(FingersOf(Read(LibinputStart + AsLibinput(Axes + Events(row.script)))), row.fingers);
        }
    }
}

TEST(RecordingReader, TracksTheFingersOfAProtocolADevice) {
    const std::string text = AxesA + Events("x100 y200 m r x110 y210 m x5000 y6000 m r x5010 y6010 m x120 y220 m r "
                                            "x130 y230 m d r x5020 y6020 m r t0 r");
    const Fingers fingers = FingersOf(Read(Start + text));
    EXPECT_EQ(FingersOf(Read(LibinputStart + AsLibinput(text))), fingers);
    const std::vector<std::size_t> counts = {1, 2, 2, 1, 0};
    ASSERT_EQ(fingers.size(), counts.size()) << testing::PrintToString(fingers);
    for (std::size_t i = 0; i < counts.size(); ++i) {
        EXPECT_EQ(fingers[i].size(), counts[i]) << "report " << i;
    }
    // A device without a touch button tells an empty contact when the last finger is up.
    EXPECT_EQ(FingersOf(Read(Start + AxesA + Events("x100 y200 m r m r"))).back(), std::vector<Contact>());
    // The order within a report changed, the fingers did not.
    EXPECT_EQ(fingers[1][0].trackingId, fingers[0][0].trackingId);
    EXPECT_EQ(fingers[2][0], (Contact{fingers[0][0].slot, fingers[0][0].trackingId, 120, 220}));
    EXPECT_EQ(fingers[3][0], (Contact{fingers[1][1].slot, fingers[1][1].trackingId, 5020, 6020}));
}

// The library that tracks the fingers has to be kept from codes and numbers of contacts that it cannot take.
TEST(RecordingReader, TakesAnythingFromAProtocolADevice) {
    std::string crowd;
    for (int report = 0; report < 3; ++report) {
        for (int i = 0; i < 40; ++i) {
            crowd +=
                "x" + std::to_string(i * 7919 % 9601) + " y" + std::to_string((i + report * 17) * 6007 % 7201) + " m ";
        }
        crowd += "r >10 ";
    }
    for (const auto& contacts : FingersOf(Read(Start + AxesA + Events(crowd)))) {
        EXPECT_EQ(contacts.size(), 10U);
    }
    const std::string foreign = "E: 1.000000 0003 ffff 9\nE: 1.000000 ffff 0035 9\nE: 1.000000 0003 002f 500\n";
    EXPECT_EQ(FingersOf(Read(Start + AxesA + foreign + Events("x-2147483648 y2147483647 m r x2147483647 m r"))).size(),
              2U);
}

TEST(RecordingReader, TellsTimesAndRangeAndSize) {
    const std::string events = Events("r >20 i5 x1 y2 r >1500 r");
    for (const Recording& plain : {Read(Start + Axes + events), Read(LibinputStart + AsLibinput(Axes + events))}) {
        EXPECT_EQ(plain.deviceName, "pad");
        EXPECT_EQ(plain.x, (replay::DeviceAxis{0, 999, 99.9}));
        EXPECT_EQ(plain.y, (replay::DeviceAxis{-100, 399, 99.8}));
        std::vector<std::int64_t> times;
        for (const Report& report : plain.reports) {
            times.push_back(report.timeUs);
        }
        EXPECT_EQ(times, std::vector<std::int64_t>({0, 20'000, 1'520'000}));
    }
    EXPECT_EQ(Read(Start + "# Size in mm: 595x334\n" + Axes + events).x.sizeMm, 595);
    EXPECT_FALSE(Read("N: pad\n" + AxesA + Events("x1 y2 m r")).x.sizeMm.has_value());
}

TEST(RecordingReader, TakesEveryVersionCommentAndForeignEvent) {
    const std::string tail = "E: 1.000000 0003 0039 5\nE: 1.000000 0003 0035 0001\t# EV_ABS / ABS_MT_POSITION_X\n"
                             "E: 1.000000 0003 0036 2\n\nE: 1.000000 0004 0004 77\nE: 1.000000 ffff ffff -1\n"
                             "# a remark\nE: 1.000000 0000 0000 0000\r\n";
    for (const char* version : {"", "# EVEMU 1.0\n", "# EVEMU 1.1\n", "# EVEMU 1.2\n", "# EVEMU 1.3\r\n"}) {
        const Fingers fingers = FingersOf(Read(version + std::string("N: pad\nL: 00 0\nS: 00 0\n") + Axes + tail));
        EXPECT_EQ(fingers, Fingers({{{0, 5, 1, 2}}})) << version;
    }
}

TEST(RecordingReader, AFaultIsNamedWithItsLine) {
    const std::string head = "# EVEMU 1.3\nN: pad\nA: 2f 0 1 0 0 0\nA: 35 0 9 0 0 0\nA: 36 0 9 0 0 0\n";
    const std::string report = "E: 2.000000 0003 0035 1\nE: 2.000000 0000 0000 0\n";
    const std::string yaml = "version: 1\ndevices:\n- evdev:\n    absinfo:\n      53: [0, 9, 0, 0, 0]\n"
                             "      54: [0, 9, 0, 0, 0]\n    name: pad\n  events:\n  - evdev:\n";
    const std::string pads = LibinputStart + AsLibinput(Axes + report) + AsLibinput(Axes + report, "pad", "event6");
    const std::pair<std::string, const char*> rows[] = {
        {"", "r.evemu: not a touch recording"},
        {"some text\n", "r.evemu:1: not a touch recording"},
        {report, "r.evemu: events without a description: expected \"r.desc\""},
        {report + head, "r.evemu:4: expected an event"},
        {"# EVEMU 1.4\n", "r.evemu:1: unsupported version"},
        {"# EVEMU one\n", "r.evemu:1: unsupported version"},
        {head, "r.evemu: there are no events in it"},
        {head + report + "E: 2.000000 0003 0035 2\n", "r.evemu:8: the recording is cut off"},
        {head + report + "E: 2.000000 0003 0035", "r.evemu:8: expected an event"},
        {head + report + "E: 2.000000 0003 0035 1 x\n", "r.evemu:8: expected an event"},
        {head + report + "E: 2.000000 0003 0035 2147483648\n", "r.evemu:8: expected an event"},
        {head + report + "E: 2.000000 10000 0035 1\n", "r.evemu:8: expected an event"},
        {head + report + "E: 2.00000 0003 0035 1\n", "r.evemu:8: expected an event"},
        {head + "E: -1.000000 0003 0035 1\n", "r.evemu:6: expected an event"},
        {head + "E: 9223372036854775807.000000 0003 0035 1\n", "r.evemu:6: expected an event"},
        {head + "junk\n" + report, "r.evemu:6: expected a line of the device's description"},
        {head + report + "A: 39 0 9 0 0 0\n", "r.evemu:8: expected an event"},
        {"N: pad\nA: 35 0 9\n", "r.evemu:2: expected an axis"},
        {"N: pad\nA: 40 0 9 0 0 0\n", "r.evemu:2: expected an axis"},
        {"N: pad\nA: 35 9 9 0 0\nA: 36 0 9 0 0\n" + report, "r.evemu:2: expected an axis whose"},
        {"N: pad\nA: 00 0 9 0 0\nA: 01 0 9 0 0\n" + report, "r.evemu: there is no touch in it"},
        {head + report + "E: 1.999999 0000 0000 0\n", "r.evemu:8: the time runs backward"},
        {head + report + "E: 3602.000001 0000 0000 0\n", "r.evemu:8: expected a recording of at most an hour"},
        {head + "E: 2.000000 0003 002f 2\n" + report, "r.evemu:6: expected a slot from 0 to 1"},
        {"N: pad\nA: 2f 0 9999 0 0 0\nA: 35 0 9 0 0 0\nA: 36 0 9 0 0 0\nE: 2.000000 0003 002f 1024\n" + report,
         "r.evemu:5: expected a slot from 0 to 1023"},
        {head + "E: 2.000000 0000 0003 0\nE: 2.000000 0000 0000 0\n", "r.evemu: expected a report"},
        {yaml + "    - [2, 0, 3, 53, 1]\n", "r.evemu:10: the recording is cut off"},
        {yaml + "    - [2, 0, 0, 0, 0]\n    - [1, 0, 0, 0, 0]\n", "r.evemu:11: the time runs backward"},
        {yaml + "    - [2, 0, 3, 5", "r.evemu:10: expected an event"},
        {yaml + "    - [2, 0, 3, 53]\n", "r.evemu:10: expected an event"},
        {yaml + "    - [2, 0, 3, 53, 1]]\n", "r.evemu:10: expected YAML"},
        {yaml + "    - [2, 1000000, 3, 53, 1]\n", "r.evemu:10: expected an event"},
        {yaml + "    - [2, 0, 3, 65536, 1]\n", "r.evemu:10: expected an event"},
        {yaml + "    - [2, 0, 3, 53, 2147483648]\n", "r.evemu:10: expected an event"},
        {yaml + "    - [2, 0, 3, 53, 1, 1]\n", "r.evemu:10: expected a list of 5 whole numbers"},
        {yaml + "    - [2, 0, 3, x, 1]\n", "r.evemu:10: expected a list of 5 whole numbers"},
        {yaml + "    - [2, 0, 3, , 1]\n", "r.evemu:10: expected"},
        {yaml + "    - {2: 0}\n", "r.evemu:10: expected an event"},
        {yaml + "    - *there\n", "r.evemu:10: expected"},
        {yaml + "    - [2, 0, 0, 0, 0]\n  - &there 1\n  - *there\n", "r.evemu:11: expected keys with values"},
        {yaml + "    - [2, 0, 0, 0, 0]\n  - keys: &there 1\n  - keys: *there\n", "r.evemu:12: expected no alias"},
        {yaml + "    - [2, 0, 0, 0, 0]\n  - [a]: 1\n", "r.evemu:11: expected"},
        {yaml + "    - [2, 0, 0, 0, 0]\nmore: " + std::string(99, '[') + std::string(99, ']'),
         "r.evemu:11: nested more than 16 deep"},
        {yaml + "    - [2, 0, 0, 0, 0]\n---\nmore: 1\n", "r.evemu:11: expected nothing behind"},
        {"version: 1\ndevices: 3\n", "r.evemu:2: expected a list under \"devices\""},
        {"version: 2\n", "r.evemu:1: unsupported version"},
        {"devices:\n", "r.evemu: not a touch recording"},
        {"version: 1\ndevices:\n- evdev:\n    absinfo:\n      64: [0, 9, 0, 0, 0]\n", "r.evemu:5: expected an axis"},
        {"version: 1\ndevices:\n- evdev:\n    absinfo:\n      53: [0, 9, 0, 0]\n", "r.evemu:5: expected an axis"},
        {LibinputStart + AsLibinput(report), "r.evemu: there is no touch in it"},
        {LibinputStart + AsLibinput(Axes), "r.evemu: there are no events in it"},
        {pads, "r.evemu: choose one of its touch devices with --device: \"pad\" at \"event5\", \"pad\" at \"event6\""},
    };
    for (const auto& [text, expected] : rows) {
        try {
            (void)Read(text);
            ADD_FAILURE() << "no error, but not " << expected;
        } catch (const replay::ReadError& error) {
            EXPECT_TRUE(std::string(error.what()).starts_with(expected)) << error.what() << ", but not " << expected;
        }
    }
}

TEST(RecordingReader, ADeviceIsChosenByNameOrNode) {
    const std::string keys = AsLibinput("E: 1.000000 0001 0002 1\n", "keys", "event3");
    const std::string untouched = AsLibinput(Axes, "pen", "event4");
    const std::string first = AsLibinput(Axes + Events("i5 x1 y2 r"));
    const std::string second = AsLibinput(Axes + Events("i6 x3 y4 r"), "pad", "event6");
    const Fingers one = {{{0, 5, 1, 2}}};
    const Fingers two = {{{0, 6, 3, 4}}};
    EXPECT_EQ(FingersOf(Read(LibinputStart + keys + untouched + first)), one);
    EXPECT_EQ(FingersOf(Read(LibinputStart + keys + first, "pad")), one);
    EXPECT_EQ(FingersOf(Read(LibinputStart + first + second, "event6")), two);
    const std::pair<const char*, const char*> rows[] = {
        {"pad", "r.evemu: choose one of its touch devices with --device: \"pad\" at \"event5\", \"pad\""},
        {"keys", "r.evemu: there is no touch device \"keys\" in it, but \"pad\" at \"event5\", \"pen\""},
        {"pen", "r.evemu: there are no events in it"},
    };
    for (const auto& [device, expected] : rows) {
        try {
            (void)Read(LibinputStart + first + keys + untouched + second, device);
            ADD_FAILURE() << "no error, but not " << expected;
        } catch (const replay::ReadError& error) {
            EXPECT_TRUE(std::string(error.what()).starts_with(expected)) << error.what();
        }
    }
}

// The recordings beside the project. They are no part of it, so a machine may be without them.
std::vector<std::filesystem::path> SharedRecordings() {
    std::vector<std::filesystem::path> files;
    std::string folder;
#ifdef SHARED_RECORDINGS_DIR
    folder = SHARED_RECORDINGS_DIR;
#endif
    if (const char* given = std::getenv("SHARED_RECORDINGS_DIR")) {
        folder = given;
    }
    std::error_code missing;
    for (const auto& entry : std::filesystem::directory_iterator(folder, missing)) {
        if (entry.path().extension() == ".evemu") {
            files.push_back(entry.path());
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

// libevemu reads the same device and the same events.
void ExpectTextOfLibrary(const replay::DeviceText& text, const std::filesystem::path& path) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "r"), &std::fclose);
    const std::unique_ptr<evemu_device, void (*)(evemu_device*)> device(evemu_new(nullptr), &evemu_delete);
    ASSERT_TRUE(file && device && evemu_read(device.get(), file.get()) > 0);
    EXPECT_EQ(text.name, evemu_get_name(device.get()));
    for (int code = 0; code <= ABS_MAX; ++code) {
        const auto axis = text.axes.find(code);
        ASSERT_EQ(axis != text.axes.end(), evemu_has_event(device.get(), EV_ABS, code) != 0) << code;
        if (axis != text.axes.end()) {
            EXPECT_EQ(axis->second.minimum, evemu_get_abs_minimum(device.get(), code));
            EXPECT_EQ(axis->second.maximum, evemu_get_abs_maximum(device.get(), code));
            EXPECT_EQ(axis->second.fuzz, evemu_get_abs_fuzz(device.get(), code));
            EXPECT_EQ(axis->second.resolution, evemu_get_abs_resolution(device.get(), code));
        }
    }
    std::size_t count = 0;
    for (input_event event{}; evemu_read_event(file.get(), &event) > 0; ++count) {
        ASSERT_LT(count, text.events.size());
        const replay::DeviceEvent& own = text.events[count];
        EXPECT_EQ(own.timeUs, event.input_event_sec * 1'000'000 + event.input_event_usec);
        EXPECT_EQ(std::tie(own.type, own.code, own.value), std::tie(event.type, event.code, event.value));
    }
    EXPECT_EQ(count, text.events.size());
}

TEST(RecordingReader, ReadsTheSharedRecordingsAsTheLibraryDoes) {
    const auto files = SharedRecordings();
    if (files.empty()) {
        GTEST_SKIP() << "no shared recordings under SHARED_RECORDINGS_DIR";
    }
    struct Row {
        const char* gesture;  // the end of the file's name
        std::size_t most;     // fingers at a time
        std::size_t all;      // different fingers
    };
    const std::vector<Row> rows = {
        {"one-finger-drag", 1, 1},   {"fast-taps", 1, 9},        {"two-finger-drag", 2, 2}, {"two-finger-tap", 2, 2},
        {"two-finger-circle", 2, 2}, {"four-finger-drag", 4, 4}, {"ten-point", 5, 12},
    };
    for (const auto& file : files) {
        SCOPED_TRACE(file.filename());
        std::ifstream input(file, std::ios::binary);
        ExpectTextOfLibrary(replay::ReadEvemuText(input, file.string()), file);

        input.clear();
        input.seekg(0);
        const Recording recording = replay::ReadRecording(input, file.string());
        std::size_t most = 0;
        std::set<std::int32_t> all;
        for (const Report& report : recording.reports) {
            most = std::max(most, report.contacts.size());
            for (const Contact& contact : report.contacts) {
                all.insert(contact.trackingId);
            }
        }
        EXPECT_TRUE(recording.reports.GetLast().contacts.empty());
        for (const Row& row : rows) {
            if (file.stem().string().ends_with(row.gesture)) {
                EXPECT_EQ(std::pair(most, all.size()), std::pair(row.most, row.all));
            }
        }
    }
}

}  // namespace
