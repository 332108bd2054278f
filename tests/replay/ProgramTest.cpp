// The built replay program, as a user runs it: exit codes, what it says, and what it leaves behind.
#include "replay/program/ProgressBar.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/wait.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <optional>
#include <regex>
#include <sstream>
#include <string>
#include <utility>

namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::MatchesRegex;
namespace fs = std::filesystem;

const std::string Header = R"({"session": 1, "view": {"kind": "shapeview", "size": [1280, 800], "camera": )"
                           R"({"orthographic": true, "window": [-8, 8, -5, 5], "distance": 1, "u": [1, 0, 0], )"
                           R"("v": [0, 1, 0], "w": [0, 0, 1], "position": [0, 0, 20]}}})"
                           "\n";
const std::string TapSession = Header + R"({"timer": [1000, 10]}
{"touch": [[1, 640, 400, 5000, 2]]}
{"timer": [1010, 10]}
{"touch": [[1, 640, 400, 5010, 4]]}
{"statusBar": true}
)";

const std::string Command = "'" TOUCH_REPLAY_PROGRAM "' ";

struct Result {
    int exitCode = -1;
    std::string output;
    std::string errors;
};

std::ptrdiff_t CountLines(const std::string& text) {
    return std::count(text.begin(), text.end(), '\n');
}

std::string ReadAll(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// A folder of its own for each test, in which the program runs.
class Program : public ::testing::Test {
protected:
    void SetUp() override {
        std::string name = (fs::temp_directory_path() / "touch-replay-test-XXXXXX").string();
        ASSERT_NE(mkdtemp(name.data()), nullptr);
        m_folder = name;
        fs::create_directory(Inside());
        Write("tap.jsonl", TapSession);
    }
    void TearDown() override { fs::remove_all(m_folder); }

    [[nodiscard]] fs::path Inside() const { return m_folder / "inside"; }
    void Write(const std::string& name, const std::string& text) const {
        std::ofstream(Inside() / name, std::ios::binary) << text;
    }
    [[nodiscard]] Result Run(const std::string& arguments) const { return Shell(Command + arguments); }
    // Runs a piece of shell command line in the folder.
    [[nodiscard]] Result Shell(const std::string& piece) const {
        const std::string command = "cd '" + Inside().string() + "' && { " + piece + "; }";
        const std::string output = (m_folder / "output").string();
        const std::string errors = (m_folder / "errors").string();
        const int status = std::system(("{ " + command + "; } >'" + output + "' 2>'" + errors + "'").c_str());
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, ReadAll(output), ReadAll(errors)};
    }
    // The names and texts of all ordinary files in the folder.
    [[nodiscard]] std::map<std::string, std::string> Files() const {
        std::map<std::string, std::string> files;
        for (const fs::directory_entry& entry : fs::directory_iterator(Inside())) {
            if (entry.is_regular_file()) {
                files[entry.path().filename().string()] = ReadAll(entry.path());
            }
        }
        return files;
    }

private:
    fs::path m_folder;
};

TEST_F(Program, ReplaysAPluginThatDoesNotTellItsStateAndSaysSo) {
    const Result result = Run("tap.jsonl --trace - --plugin '" SILENT_PLUGIN "'");
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_THAT(result.output, HasSubstr(R"("gesture": null, "state": null, "navigate": null)"));
    EXPECT_THAT(result.errors, HasSubstr("does not tell the state"));
}

TEST_F(Program, TellsEachFaultInOneLineAndLeavesNothingBehind) {
    const std::pair<const char*, const char*> rows[] = {
        {"", "FILE"},
        {"tap.jsonl --fast", "--fast"},
        {"tap.jsonl tap.jsonl", "tap\\.jsonl"},
        {"tap.jsonl --trace", "--trace"},
        {"none.jsonl --trace t", "none\\.jsonl: .*No such file"},
        {". --trace t", "folder"},
        {"bad.jsonl --trace t --write-session s", "bad\\.jsonl:2: .*expected"},
        {"bad.evemu --trace t --write-session s", "bad\\.evemu"},
        {"empty.evemu --trace t", "empty\\.evemu"},
        {"bad.evemu --size 100", "--size: expected WIDTHxHEIGHT"},
        {"bad.evemu --size 1x100", "--size: expected"},
        {"bad.evemu --from 2 --to 1", "--from: expected a time before"},
        {"bad.evemu --size 100x99999999999", "--size: expected"},
        {"bad.evemu --size 100x100x", "--size: expected"},
        {"tap.jsonl --size 100x100 --trace t", "--size: for recordings only"},
        {"tap.jsonl --mouse-echo", "--mouse-echo: for recordings only"},
        {"bad.evemu --view movie", "--view"},
        {"bad.evemu --camera fisheye", "--camera"},
        {"bad.evemu --nav-method fly", "--nav-method"},
        {"bad.evemu --nav-method explore", "--nav-method: .*--camera perspective"},
        {"bad.evemu --view drawingview --nav-method standard", "--nav-method: for shape views only"},
        {"bad.evemu --view drawingview --camera perspective", "--camera: for shape views only"},
        {"whole.evemu --view drawingview --model m.obj", "--model: for shape views only"},
        {"bad.evemu --env HXAPP_DONTFLY", "--env"},
        {"bad.evemu --rotate 45", "--rotate"},
        {"lone.events", "lone\\.events: events without a description: .*\"lone\\.desc\" .*--device FILE"},
        {"lone.events --device none.desc", "none\\.desc: cannot be read"},
        {"lone.events --device bad.desc", "bad\\.desc:2: expected an axis"},
        {"lone.events --device lone.events", "lone\\.events: not the description of a device"},
        {"lone.events --device keys.desc", "keys\\.desc: there is no touch in it"},
        {"cut.events", "cut\\.events:1: the recording is cut off"},
        {"cut.desc", "cut\\.desc: there are no events in it"},
        {"whole.evemu --device cut.desc", "whole\\.evemu: it describes its device itself"},
        {"tap.jsonl --trace t --plugin ./none.so", "none\\.so"},
        {"tap.jsonl --trace t --plugin tap.jsonl", "tap\\.jsonl"},
        {"tap.jsonl --trace t --model none.obj", "none\\.obj"},
        {"tap.jsonl --trace t --model crash.gltf", "crash\\.gltf: cannot be read as a model: its reader crashed"},
        {"tap.jsonl --up z", "--up requires --model"},
        {"tap.jsonl --model crash.gltf --up x", "--up: "},
        {"tap.jsonl --trace t --storyboard s.gif", "--storyboard: .*\\.svg or \\.png"},
        {"tap.jsonl --trace t --write-session s --storyboard none/s.svg", "none/s\\.svg"},
        {"tap.jsonl --write-session s --trace none/t", "none/t: cannot be"},
        {"tap.jsonl --write-session s --trace .", "\\.: cannot be written"},
        {"tap.jsonl --trace ''", "--trace: expected a file name"},
        {"tap.jsonl --trace t --write-session ./t", "--write-session: \\./t is written by --trace"},
        {"tap.jsonl --trace - --write-session -", "--write-session: - is written by --trace"},
        {"tap.jsonl --trace ./tap.jsonl", "--trace: \\./tap\\.jsonl is read as FILE"},
        {"tap.jsonl --write-session link", "--write-session: link is read as FILE"},
        {"- --trace hard <tap.jsonl", "--trace: hard is read as FILE"},
        {"tap.jsonl --model bad.jsonl --trace bad.jsonl", "--trace: bad\\.jsonl is read as --model"},
        {"cut.events --trace cut.desc", "--trace: cut\\.desc is read as --device"},
        {"tap.jsonl --trace dangling --write-session nowhere", "--write-session: nowhere is written by --trace"},
        {"bad.evemu --size ''", "--size: expected"},
        {"- <bad.evemu", "standard input:1: not a"},
        {"'no\nne.jsonl'", "no ne\\.jsonl: cannot be read"},
        {"'" BUNDLED_RECORDINGS_DIR "/tap.evemu' --view imageview --plugin '" SILENT_PLUGIN "'",
         "no standard exception"},
    };
    Write("bad.jsonl", Header + "{\"timer\": [1]}\n");
    Write("bad.evemu", "This is no recording.\n");
    Write("empty.evemu", "");
    const std::string description = "N: pad\nA: 35 0 9 0 0\nA: 36 0 9 0 0\n";
    Write("whole.evemu",
          description +
              "E: 1.000000 0003 0035 1\nE: 1.000000 0003 0036 1\nE: 1.000000 0000 0002 0\nE: 1.000000 0000 0000 0\n");
    Write("lone.events", "E: 1.000000 0000 0000 0\n");
    Write("bad.desc", "N: pad\nA: 35 0\n");
    Write("keys.desc", "N: keys\n");
    Write("cut.events", "E: 1.000000 0003 0035 0\n");
    Write("cut.desc", description);
    Write("m.obj", "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n");
    fs::create_symlink("tap.jsonl", Inside() / "link");
    fs::create_symlink("nowhere", Inside() / "dangling");
    fs::create_hard_link(Inside() / "tap.jsonl", Inside() / "hard");
    Write("crash.gltf", R"({"asset": {"version": "2.0"}, "extras": )" + std::string(500'000, '['));
    const auto before = Files();
    for (const auto& [arguments, error] : rows) {
        SCOPED_TRACE(arguments);
        const Result result = Run(arguments);
        EXPECT_EQ(result.exitCode, 2);
        EXPECT_THAT(result.output, IsEmpty());
        EXPECT_TRUE(std::regex_match(result.errors, std::regex("touch-replay: .*" + std::string(error) + ".*\n")))
            << result.errors;
        EXPECT_EQ(Files(), before);
    }
}

TEST_F(Program, KeepsAnOlderFileWhenTheNewOneFailsAndFollowsALinkToIt) {
    Write("t", "older");
    fs::permissions(Inside() / "t", fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(Run("tap.jsonl --trace t --storyboard none/s.svg").exitCode, 2);
    EXPECT_EQ(Files()["t"], "older");
    fs::create_symlink("t", Inside() / "link");
    EXPECT_EQ(Run("tap.jsonl --trace link").exitCode, 0);
    EXPECT_TRUE(fs::is_symlink(Inside() / "link"));
    EXPECT_THAT(Files()["t"], HasSubstr("\"event\": 5"));
    EXPECT_EQ(fs::status(Inside() / "t").permissions(), fs::perms::owner_read | fs::perms::owner_write);
    fs::create_symlink("s", Inside() / "dangling");
    EXPECT_EQ(Run("tap.jsonl --trace /dev/null --write-session dangling").exitCode, 0);
    EXPECT_EQ(fs::read_symlink(Inside() / "dangling"), "s");
    EXPECT_EQ(Files()["s"], TapSession);
}

TEST_F(Program, TellsWhenItsOutputIsLost) {
    if (!fs::exists("/dev/full")) {
        GTEST_SKIP() << "no device that is always full";
    }
    const auto before = Files();
    for (const char* arguments : {"tap.jsonl --write-session s --trace /dev/full", "tap.jsonl --trace - >/dev/full",
                                  "tap.jsonl --trace t --write-session s >/dev/full", "--help >/dev/full",
                                  "'" BUNDLED_RECORDINGS_DIR "/flick.evemu' --trace t --write-session /dev/full"}) {
        SCOPED_TRACE(arguments);
        const Result result = Run(arguments);
        EXPECT_EQ(result.exitCode, 2);
        EXPECT_THAT(result.errors, HasSubstr("cannot be written: No space left on device"));
        EXPECT_EQ(Files(), before);
    }
    EXPECT_FALSE(fs::is_regular_file("/dev/full"));
}

// However the program ends while a child reads a model for it, the child ends as well.
TEST_F(Program, EndsWithItsChildWhileAModelIsRead) {
    std::string nodes;  // each holds the next one twice, which takes the library for ever
    for (int i = 1; i <= 60; ++i) {
        nodes += R"({"children": [)" + std::to_string(i) + ", " + std::to_string(i) + "]}, ";
    }
    Write("slow.gltf", R"({"asset": {"version": "2.0"}, "scene": 0, "scenes": [{"nodes": [0]}], "nodes": [)" + nodes +
                           R"({"name": "last"}]})");
    for (const auto& [signal, outcome] : {std::pair{"TERM", "0 143\n"}, {"KILL", "0 137\n"}}) {
        SCOPED_TRACE(signal);
        const Result result = Shell(Command + R"(tap.jsonl --model slow.gltf & pid=$!
            alive() { grep -q '^State:.[RSD]' "/proc/$1/status"; } 2>/dev/null
            child=; while alive $pid && [ -z "$child" ]; do read -r child _ <"/proc/$pid/task/$pid/children"; done
            kill -)" + std::string(signal) +
                                    R"( $pid; wait $pid; code=$?
            for i in 1 2 3 4 5 6 7 8 9; do alive "$child" && sleep 0.1; done
            [ -n "$child" ] && ! alive "$child"; echo "$? $code")");
        EXPECT_EQ(result.output, outcome) << result.errors;
    }
}

TEST_F(Program, TellsWhenItsReaderHasGone) {
    // The reader lets the program begin only when it has closed its end.
    const Result result = Shell("mkfifo go && { read -r _ <go; " + Command +
                                "tap.jsonl --trace -; echo $? >code; } | { exec <&-; echo >go; }");
    EXPECT_EQ(Files()["code"], "2\n");
    EXPECT_EQ(result.errors, "touch-replay: standard output: cannot be written: Broken pipe\n");
}

TEST_F(Program, EndsAtOnceWhenItIsInterruptedAndLeavesNothingBehind) {
    // It waits for a reader of the pipe, with the other output begun. A shell lets its background ignore Ctrl-C.
    const std::string waiting =
        "timeout -s KILL 60 env --default-signal=INT " + Command +
        "tap.jsonl --write-session s --trace pipe & until ls *.part || ! kill -0 $!; do sleep 0.02; done; ";
    ASSERT_EQ(Shell("mkfifo pipe").exitCode, 0);
    const auto before = Files();
    for (const auto& [signal, number] : {std::pair("INT", 2), {"TERM", 15}, {"HUP", 1}}) {
        SCOPED_TRACE(signal);
        EXPECT_EQ(Shell(waiting + "kill -" + signal + " $!; wait $!").exitCode, 128 + number);
        EXPECT_EQ(Files(), before);
    }
}

TEST(ProgressBar, GoesAwayWithItsTask) {
    std::ostringstream terminal;
    std::optional<replay::ProgressBar> bar(terminal);
    bar->Update(1, 30'000);
    const std::string shown = terminal.str();
    EXPECT_EQ(shown.substr(0, 2), "\r[");
    bar.reset();
    EXPECT_EQ(terminal.str(), shown + "\r" + std::string(shown.size() - 1, ' ') + "\r");
}

TEST_F(Program, AnswersForHelpAndVersion) {
    const Result help = Run("--help");
    EXPECT_EQ(help.exitCode, 0);
    for (const char* text : {"--storyboard", "ecadpcbview", "explore", "HXAPP_DONTPAN"}) {
        EXPECT_THAT(help.output, HasSubstr(text));
    }
    const Result version = Run("--version");
    EXPECT_EQ(version.exitCode, 0);
    EXPECT_THAT(version.output, MatchesRegex("touch-replay [0-9]+\\.[0-9]+\\.[0-9]+\n"));
}

TEST_F(Program, TellsTheStoryUnlessTheTraceTakesItsPlace) {
    const Result story = Run("tap.jsonl --trace t");
    EXPECT_EQ(story.exitCode, 0);
    EXPECT_THAT(story.errors, IsEmpty());
    EXPECT_EQ(story.output, "tap.jsonl: 5 events in 0.01 s, shapeview 1280 x 800 px, width 16 units\n"
                            "  0.00 s            status bar     \"Touch: navigate\"\n"
                            "  0.00 s - 0.01 s   1 finger       Tap: left click at (640, 400) px, picked shaft\n");

    const Result trace = Run("tap.jsonl --trace -");
    EXPECT_EQ(trace.output, Files()["t"]);
    EXPECT_EQ(CountLines(trace.output), 5);
    EXPECT_EQ(trace.output.rfind("{\"event\": 1, ", 0), 0U);
    EXPECT_THAT(trace.output, HasSubstr(R"(["SendMessage", "MsgClickLeft", 640, 400, false])"));
}

TEST_F(Program, TakesAFileForASessionByItsFirstCharacter) {
    Write("session", "\n \t" + TapSession);
    Write("spaced", " " + TapSession);
    EXPECT_THAT(Run("session").errors, HasSubstr("session:1: "));  // understood as a session, which has no empty lines
    EXPECT_EQ(Run("spaced --trace -").output, Run("tap.jsonl --trace -").output);
    EXPECT_EQ(Shell("cat spaced | " + Command + "/dev/stdin --trace -").output, Run("tap.jsonl --trace -").output);
    EXPECT_EQ(Run("- --write-session - <spaced").output, TapSession);
}

TEST_F(Program, GivesTheSameBytesFromARecordingAndTheSessionMadeOfIt) {
    struct Row {
        const char* recording;
        const char* options;
        const char* evidence;  // in the trace, that the touch reached the component
    };
    const Row rows[] = {
        {"flick", "--mouse-echo", "AddTransition"},
        {"twist", "--camera perspective --size 1001x777", "SetCameraLocation"},
        {"two-finger-tap", "--env HXAPP_DONTSPIN --env HXAPP_TWO_FINGER_TAP_TOUCH_MODE_CHANGE", "Touch: select"},
        {"pinch-2d", "--view drawingview", "SetOrthoWidth"},
        {"pan", "--view other", "Touch: navigate"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.recording);
        const std::string recording =
            std::string("'" BUNDLED_RECORDINGS_DIR "/") + row.recording + ".evemu' " + row.options;
        EXPECT_EQ(Run(recording + " --trace t1 --write-session s1.jsonl").exitCode, 0);
        EXPECT_EQ(Run("s1.jsonl --trace t2 --write-session s2.jsonl").exitCode, 0);
        auto files = Files();
        EXPECT_NE(files["t1"].find(row.evidence), std::string::npos);
        EXPECT_TRUE(files["t1"] == files["t2"]) << "the traces differ";
        EXPECT_TRUE(files["s1.jsonl"] == files["s2.jsonl"]) << "the sessions differ";
    }
}

TEST_F(Program, PlaysEventsWithADescriptionOfTheirOwn) {
    const std::string recording = "'" BUNDLED_RECORDINGS_DIR "/tap.evemu'";
    ASSERT_EQ(Shell("grep -v ^E: " + recording + " >a.desc && grep ^E: " + recording + " >a.events").exitCode, 0);
    fs::copy(Inside() / "a.events", Inside() / "b.events");
    const std::string trace = Run(recording + " --trace -").output;
    EXPECT_THAT(trace, HasSubstr("MsgClickLeft"));
    EXPECT_EQ(Run("a.events --trace -").output, trace);
    EXPECT_EQ(Run("b.events --device a.desc --trace -").output, trace);
}

// Under the sanitizers this is also where a leak or an undefined step of a whole gesture would show.
TEST_F(Program, EveryBundledRecordingDoesWhatItsNameSays) {
    const std::string explore = " --camera perspective --nav-method explore";
    struct Row {
        const char* recording;
        std::string options;
        const char* story;
    };
    const Row rows[] = {
        {"spin-right", "", "Spin: turned 81.1 degrees to the right"},
        {"spin-up", "", "Spin: turned 48.9 degrees up"},
        {"spin-around", "", "along the way"},
        {"spin-right", explore, "looked"},
        {"flick", "", "Coasting: turned"},
        {"tap", "", "picked flange"},
        {"double-tap", " --from 0.2", "from 0.20 s to 0.95 s"},
        {"double-tap", "", "left click at (692, 377) px"},
        {"two-finger-tap", " --env HXAPP_TWO_FINGER_TAP_TOUCH_MODE_CHANGE", "switched to select mode"},
        {"pan", "", "Pan: moved 198 px right and 123 px up\n"},
        {"pan", " --rotate 180", "Pan: moved 197 px left and 123 px down\n"},
        {"pan", " --flip-y", "Pan: moved 198 px right and 123 px down\n"},
        {"pan", " --flip-x", "Pan: moved 197 px left and 123 px up\n"},
        {"pinch-open", "", "Zoom: zoomed in 1.63 times (width 14.9 to 9.11 units)\n"},
        {"pinch-open", " --env HXAPP_DONTZOOM", "Pan: moved 1 px left and 1 px down (44 px along the way)\n"},
        {"pinch-open", " --camera perspective", "Zoom: zoomed in 1."},
        {"pinch-close", "", "Zoom: zoomed out 1.54 times"},
        {"twist", "", "Twist: turned 65.1 degrees counter-clockwise"},
        {"two-hands", "", "4 fingers      Zoom: zoomed in 1.78 times"},
        {"one-hand-flight", explore, "Fly: the eye moved"},
        {"two-hands-flight", explore + " --env HXAPP_TOUCH_TWO_HANDS_EXPLORE", "degrees to the right"},
        {"drag-2d", " --view drawingview", "Pan: moved 237 px right and 179 px up"},
        {"pinch-2d", " --view imageview", "zoomed in 1.69 times (width 16 to 9.49 units)"},
        {"press-and-hold", "", "right click at (565, 449) px, context actions of cover"},
        {"three-finger-hold", "", "switched to select mode"},
        {"select-drag", "", "selected flange"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.recording + row.options);
        const Result result =
            Run(std::string("'" BUNDLED_RECORDINGS_DIR "/") + row.recording + ".evemu'" + row.options);
        EXPECT_EQ(result.exitCode, 0) << result.errors;
        EXPECT_THAT(result.output, HasSubstr(row.story));
    }
}

TEST_F(Program, PlaysRecordingsOfRealScreensInEveryKindOfView) {
    if (!fs::is_directory(SHARED_RECORDINGS_DIR)) {
        GTEST_SKIP() << "there are no recordings of real screens beside this tree";
    }
    for (const fs::directory_entry& entry : fs::directory_iterator(SHARED_RECORDINGS_DIR)) {
        if (entry.path().extension() != ".evemu") {
            continue;
        }
        for (const char* options : {"", " --camera perspective", " --view drawingview", " --view ecadpcbview"}) {
            SCOPED_TRACE(entry.path().filename().string() + options);
            const Result result = Run("'" + entry.path().string() + "'" + options);
            EXPECT_EQ(result.exitCode, 0) << result.errors;
            EXPECT_THAT(result.output, HasSubstr("finger"));
        }
    }
}

TEST_F(Program, DrawsTheSameStoryboardTwice) {
    const std::string drawing = "'" BUNDLED_RECORDINGS_DIR "/tap.evemu' --storyboard ";
    EXPECT_EQ(Run(drawing + "1.svg").exitCode + Run(drawing + "2.svg").exitCode, 0);
    auto files = Files();
    EXPECT_NE(files["1.svg"].find("</svg>"), std::string::npos);
    EXPECT_TRUE(files["1.svg"] == files["2.svg"]);
}

TEST_F(Program, EchoesTouchAsMouseMessages) {
    for (const auto& [recording, expected] :
         {std::pair("tap", "MsgMouseMove MsgMouseLeftDown MsgMouseLeftUp MsgClickLeft "),
          {"two-finger-tap", "MsgMouseMove MsgMouseLeftDown MsgMouseLeftUp "}}) {
        const Result result =
            Run(std::string("'" BUNDLED_RECORDINGS_DIR "/") + recording + ".evemu' --mouse-echo --write-session -");
        std::istringstream session(result.output);
        std::string messages;
        for (std::string line; std::getline(session, line);) {
            messages += line.starts_with("{\"mouse\"") ? line.substr(12, line.find(',') - 13) + " " : "";
        }
        EXPECT_EQ(messages, expected);
    }
}

}  // namespace
