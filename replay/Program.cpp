#include "replay/Program.h"

#include "replay/InputFile.h"
#include "replay/ModelFile.h"
#include "replay/MouseEcho.h"
#include "replay/Options.h"
#include "replay/OutputFile.h"
#include "replay/Player.h"
#include "replay/ProgressBar.h"
#include "replay/RecordingReader.h"
#include "replay/SessionReader.h"
#include "replay/SessionWriter.h"
#include "replay/Story.h"
#include "replay/StorySheet.h"
#include "replay/StoryWriter.h"
#include "replay/TraceWriter.h"
#include "viewer/MachinePart.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <filesystem>
#include <iostream>
#include <memory>
#include <new>
#include <optional>
#include <stdexcept>
#include <system_error>
#include <utility>
#include <variant>

namespace replay {

namespace {

constexpr int FaultExitCode = 2;
volatile std::sig_atomic_t g_interrupted = 0;

// The replay ends in good order and leaves no half-written file. A second interrupt ends the program at once.
extern "C" void NoteInterrupt(int signal) {
    g_interrupted = 1;
    std::signal(signal, SIG_DFL);
}

constexpr const char* StandardOutputName = "standard output";

// A session begins with the brace of its first object; no recording does.
bool IsSession(const std::string& fileName) {
    if (std::filesystem::path(fileName).extension() == ".jsonl") {
        return true;
    }
    std::ifstream file = OpenInputFile(fileName);
    char first = 0;
    return (file >> first) && first == '{';
}

Session LoadSession(const Options& options, const viewer::Model& model) {
    if (IsSession(options.file)) {
        if (!options.recordingOptions.empty()) {
            throw UsageError(options.recordingOptions.front() + ": for recordings only, and " + options.file +
                             " is a session, which says itself how it is set up");
        }
        return ReadSessionFile(options.file);
    }
    RecordingOptions recordingOptions = options.recording;
    recordingOptions.bounds = model.GetBounds();
    Session session = SessionFromRecording(ReadRecordingFile(options.file, options.device), recordingOptions);
    if (options.mouseEcho) {
        AddMouseEcho(session);
    }
    return session;
}

void CheckModelIsShown(const Options& options, const Session& session) {
    const auto isShapeView = [](const std::optional<viewer::ViewSpec>& view) {
        return view && viewer::IsShapeViewKind(view->kind);
    };
    const auto setsShapeView = [&](const Event& event) {
        const auto* change = std::get_if<SetViewEvent>(&event);
        return change != nullptr && isShapeView(change->view);
    };
    const bool isShown =
        isShapeView(session.view) || std::any_of(session.events.begin(), session.events.end(), setsShapeView);
    if (options.modelPath && !isShown) {
        throw UsageError("--model: for shape views only, and " + options.file + " is played without one");
    }
}

// The component: the one that is asked for, else the one that was built or installed with this program.
std::string FindPlugin(const Options& options, const ProgramSetup& setup) {
    if (options.pluginPath) {
        // A bare name would be looked for among the system's libraries.
        return std::filesystem::absolute(*options.pluginPath).string();
    }
    std::error_code fault;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", fault);
    if (fault) {
        throw viewer::PluginError("cannot tell in which folder this program is; name the component with --plugin");
    }
    return (program.parent_path() / setup.pluginBeside).lexically_normal().string();
}

// Lets something write to standard output. Throws WriteError when that, or what was written before, is lost.
template <typename Write>
void WriteStandardOutput(const Write& write) {
    errno = 0;
    write();
    if (!std::cout) {
        throw WriteError(StandardOutputName, errno);
    }
}

// Where the trace goes: nowhere, to standard output or to a file.
class TraceOutput {
public:
    explicit TraceOutput(const Options& options) : m_toStandardOutput(options.IsTraceOnStandardOutput()) {
        if (options.tracePath && !m_toStandardOutput) {
            m_file.emplace(*options.tracePath);
        }
    }

    void Write(const Observation& observation) {
        if (m_toStandardOutput) {
            WriteStandardOutput([&] { WriteTraceLine(observation, std::cout); });
        } else if (m_file) {
            WriteTraceLine(observation, m_file->GetStream());
            m_file->Check();
        }
    }
    void Commit() {
        if (m_file) {
            m_file->Commit();
        }
    }

private:
    bool m_toStandardOutput;
    std::optional<OutputFile> m_file;
};

void Replay(const Options& options, const ProgramSetup& setup) {
    const std::shared_ptr<const viewer::Model> model =
        options.modelPath ? LoadModelFile(*options.modelPath) : viewer::MakeMachinePart();
    const Session session = LoadSession(options, *model);
    CheckModelIsShown(options, session);
    const std::string plugin = FindPlugin(options, setup);
    Player player(session, plugin, model);
    if (!player.GetViewer().GetComponentState()) {
        std::cerr << "touch-replay: note: " << plugin << " does not tell the state of its workflow; gestures and modes "
                  << "are left out\n";
    }

    TraceOutput trace(options);
    std::optional<OutputFile> sessionFile;
    if (options.sessionPath) {
        sessionFile.emplace(*options.sessionPath);
        WriteSession(session, sessionFile->GetStream());
    }
    std::optional<Story> story;
    if (!options.IsTraceOnStandardOutput() || options.storyboardPath) {
        story.emplace(session.view, player.GetViewer().TakeSnapshot(), options.window);
    }
    {
        std::optional<ProgressBar> bar;
        if (IsErrorTerminal()) {
            bar.emplace(std::cerr);
        }
        player.Play(
            [&](const Observation& observation) {
                if (g_interrupted != 0) {
                    throw std::runtime_error("interrupted");
                }
                trace.Write(observation);
                if (story) {
                    story->Observe(observation, player.GetViewer().TakeSnapshot());
                }
            },
            [&](std::size_t done, std::size_t total) {
                if (bar) {
                    bar->Update(done, total);
                }
            });
    }

    // Nothing takes its place before everything has succeeded that still can fail.
    const std::string title = std::filesystem::path(options.file).filename().string();
    if (story) {
        story->Finish();
    }
    if (options.storyboardPath) {
        WriteStoryboard(MakeSheet(*story, title, model), *options.storyboardPath);
    }
    if (sessionFile) {
        sessionFile->Commit();
    }
    trace.Commit();
    if (!options.IsTraceOnStandardOutput()) {
        WriteStandardOutput([&] { WriteStory(*story, title, std::cout); });
    }
}

// A text of any origin as one line.
std::string OnOneLine(std::string text) {
    while (!text.empty() && text.back() == '\n') {
        text.pop_back();
    }
    std::replace(text.begin(), text.end(), '\n', ' ');
    return text;
}

int Fail(const std::string& text) {
    std::cerr << "touch-replay: " << OnOneLine(text) << '\n';
    return FaultExitCode;
}

}  // namespace

int RunProgram(int argc, const char* const* argv, const ProgramSetup& setup) {
    // A reader that goes away is a fault like any other and shall be told.
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGINT, NoteInterrupt);
    std::signal(SIGTERM, NoteInterrupt);
    std::ios::sync_with_stdio(false);
    try {
        std::optional<Options> options;
        WriteStandardOutput([&] { options = ParseOptions(argc, argv, setup.version, std::cout); });
        if (options) {
            Replay(*options, setup);
        }
        WriteStandardOutput([] { std::cout.flush(); });
        return 0;
    } catch (const std::bad_alloc&) {
        return Fail("out of memory");
    } catch (const std::exception& fault) {
        return Fail(fault.what());
    }
}

}  // namespace replay
