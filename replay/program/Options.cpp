// Each option is declared once, for parsing and for the help. What concerns several options, such as one that means
// nothing in the view that was chosen, is checked when all are known.
#include "replay/program/Options.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <string_view>
#include <utility>

namespace replay {

namespace {

constexpr std::uint32_t SmallestSide = 2;
constexpr std::uint32_t LargestSide = 100'000;

// The whole text as a number of pixels.
std::optional<std::uint32_t> ParseSide(std::string_view text) {
    std::uint32_t side = 0;
    const auto [end, fault] = std::from_chars(text.data(), text.data() + text.size(), side);
    const bool valid = fault == std::errc() && end == text.data() + text.size();
    return valid && side >= SmallestSide && side <= LargestSide ? std::optional(side) : std::nullopt;
}

void ParseSize(const std::string& text, RecordingOptions& recording) {
    const std::size_t separator = std::min(text.find('x'), text.size());
    const auto width = ParseSide(std::string_view(text).substr(0, separator));
    const auto height = separator < text.size() ? ParseSide(std::string_view(text).substr(separator + 1)) : width;
    if (!width || !height || separator == text.size()) {
        throw UsageError("--size: expected WIDTHxHEIGHT in pixels from " + std::to_string(SmallestSide) + " to " +
                         std::to_string(LargestSide) + ", found \"" + text + "\"");
    }
    recording.width = *width;
    recording.height = *height;
}

bool EndsWith(const std::string& text, std::string_view ending) {
    return text.size() >= ending.size() && text.compare(text.size() - ending.size(), ending.size(), ending) == 0;
}

void CheckOutputs(const Options& options) {
    if (options.storyboardPath && !EndsWith(*options.storyboardPath, ".svg") &&
        !EndsWith(*options.storyboardPath, ".png")) {
        throw UsageError("--storyboard: expected a file that ends in .svg or .png, found \"" + *options.storyboardPath +
                         "\"");
    }
    for (const auto& [name, path] :
         {std::pair<const char*, const std::optional<std::string>&>{"--trace", options.tracePath},
          {"--write-session", options.sessionPath}}) {
        if (path && path->empty()) {
            throw UsageError(std::string(name) + ": expected a file name");
        }
    }
}

// What the component asks of the environment.
const std::vector<std::string> EnvironmentSwitches = {"HXAPP_DONTPAN", "HXAPP_DONTSPIN", "HXAPP_DONTZOOM",
                                                      "HXAPP_TOUCH_TWO_HANDS_EXPLORE",
                                                      "HXAPP_TWO_FINGER_TAP_TOUCH_MODE_CHANGE"};

constexpr const char* ExploreMethod = "explore";

// Declares the options and parses. CLI11's exceptions for help, version and faults pass on.
class CommandLine {
public:
    explicit CommandLine(const std::string& version) : m_app("Replays touch and tells what it did to the view.") {
        m_app.set_version_flag("--version", "touch-replay " + version, "Print the version and exit");
        m_app.footer("Without --trace the story of the touch is printed: a line for each gesture, from when to when,\n"
                     "with how many fingers, and what the view did. Errors are one line, and the exit code\n"
                     "is then 2.");
        m_app
            .add_option("FILE", m_options.file,
                        "A session (JSON Lines: it begins with '{' or its name ends in .jsonl) or a touch recording "
                        "(of evemu, whole or in two files, or of libinput record); - is standard input")
            ->required();
        AddOutputs();
        AddRecordingOptions();
        AddModelOptions();
        m_app.add_option("--plugin", m_options.pluginPath, "The component, instead of the one beside this program")
            ->type_name("PATH");
    }

    // Takes the arguments without the program's name.
    Options Parse(std::vector<std::string> arguments) {
        std::reverse(arguments.begin(), arguments.end());  // as CLI11 wants a vector
        m_app.parse(std::move(arguments));
        if (m_size) {
            ParseSize(*m_size, m_options.recording);
        }
        m_options.recording.orthographic = m_camera == "orthographic";
        m_options.recording.feeding = m_everyReport ? input::Feeding::EveryReport : input::Feeding::FixedStep;
        CheckView();
        for (const CLI::Option* option : m_recordingOptions) {
            if (option->count() > 0) {
                m_options.recordingOptions.push_back(option->get_name());
            }
        }
        if (!(m_options.window.from < m_options.window.to)) {
            throw UsageError("--from: expected a time before that of --to");
        }
        CheckOutputs(m_options);
        return m_options;
    }

    [[nodiscard]] std::string GetHelp() const { return m_app.help("touch-replay"); }
    [[nodiscard]] std::string GetVersion() const { return m_app.version(); }

private:
    // What is given for a shape view has to mean something there.
    void CheckView() const {
        const RecordingOptions& recording = m_options.recording;
        for (const char* name : {"--camera", "--nav-method"}) {
            if (m_app.count(name) > 0 && !viewer::IsShapeViewKind(recording.viewKind)) {
                throw UsageError(std::string(name) + ": for shape views only, and --view is " + recording.viewKind);
            }
        }
        if (recording.navMethod == ExploreMethod && recording.orthographic) {
            throw UsageError("--nav-method: explore is for --camera perspective only");
        }
    }

    void AddOutputs() {
        m_app
            .add_option("--trace", m_options.tracePath,
                        "Write everything that came of each event; - is standard output")
            ->type_name("FILE");
        m_app.add_option("--storyboard", m_options.storyboardPath, "Draw what happened, as .svg or .png")
            ->type_name("FILE");
        m_app.add_option("--from", m_options.window.from, "Tell and draw what happens from this time on")
            ->type_name("SECONDS");
        m_app.add_option("--to", m_options.window.to, "Tell and draw what happens up to this time")
            ->type_name("SECONDS");
        m_app
            .add_option("--write-session", m_options.sessionPath,
                        "Write the session that is replayed; - is standard output")
            ->type_name("FILE");
    }

    void AddModelOptions() {
        const std::map<std::string, UpAxis> axes = {{"y", UpAxis::Y}, {"z", UpAxis::Z}};
        CLI::Option* model = m_app.add_option("--model", m_options.modelPath,
                                              "The model that shape views show, instead of a bearing block");
        model->type_name("FILE");
        m_app
            .add_option("--up", m_options.model.up, "The model's axis that is up, y or z; by its format when not given")
            ->type_name("AXIS")
            ->transform(CLI::CheckedTransformer(axes))
            ->needs(model);
        m_app
            .add_flag("--model-references", m_options.model.anyReferences,
                      "Let the model read files outside its folder that it refers to")
            ->needs(model);
    }

    void AddRecordingOptions() {
        const std::string group = "For recordings only (a session says itself how it is set up)";
        RecordingOptions& recording = m_options.recording;
        const std::vector<std::string> kinds(viewer::ViewKinds.begin(), viewer::ViewKinds.end());
        m_recordingOptions = {
            m_app
                .add_option("--device", m_options.device,
                            "Events of evemu alone: the file that describes their device, by default the one of the "
                            "same name that ends in .desc. Several devices: the name or node of the one to play")
                ->type_name("FILE|NAME"),
            m_app.add_flag("--flip-x", recording.mounting.flipX, "The panel's columns run from right to left"),
            m_app.add_flag("--flip-y", recording.mounting.flipY, "The panel's rows run from bottom to top"),
            m_app
                .add_option("--rotate", recording.mounting.rotation,
                            "The panel, flipped or not, is mounted turned clockwise by so many degrees")
                ->type_name("DEGREES")
                ->check(CLI::IsMember({90, 180, 270})),
            m_app.add_option("--size", m_size, "The view in pixels, 1280x800 by default")->type_name("WxH"),
            m_app.add_option("--view", recording.viewKind, "The kind of view, shapeview by default")
                ->check(CLI::IsMember(kinds)),
            m_app.add_option("--camera", m_camera, "Of a shape view, orthographic by default")
                ->check(CLI::IsMember({"orthographic", "perspective"})),
            m_app
                .add_option("--nav-method", recording.navMethod,
                            "Of a shape view, standard by default; explore flies and looks around, with a perspective "
                            "camera")
                ->check(CLI::IsMember({"standard", ExploreMethod})),
            m_app.add_option("--env", recording.environment, "An environment switch that is on; may be repeated")
                ->check(CLI::IsMember(EnvironmentSwitches))
                ->expected(1)
                ->take_all(),
            m_app.add_flag("--every-report", m_everyReport,
                           "Send a frame for each report of the device, when it comes, and not one every 10 ms of what "
                           "the fingers did meanwhile"),
            m_app.add_flag("--mouse-echo", m_options.mouseEcho,
                           "Send the mouse messages, too, that a system makes of touch"),
        };
        for (CLI::Option* option : m_recordingOptions) {
            option->group(group);
        }
    }

    CLI::App m_app;
    Options m_options;
    std::optional<std::string> m_size;
    std::string m_camera = "orthographic";
    bool m_everyReport = false;
    std::vector<CLI::Option*> m_recordingOptions;
};

}  // namespace

std::optional<Options> ParseOptions(int argc, const char* const* argv, const std::string& version,
                                    std::ostream& output) {
    CommandLine commandLine(version);
    try {
        return commandLine.Parse({argv + std::min(argc, 1), argv + argc});
    } catch (const CLI::CallForHelp&) {
        output << commandLine.GetHelp();
    } catch (const CLI::CallForVersion&) {
        output << commandLine.GetVersion() << '\n';
    } catch (const CLI::ParseError& fault) {
        throw UsageError(std::string(fault.what()) + " (touch-replay --help lists the options)");
    }
    return std::nullopt;
}

}  // namespace replay
