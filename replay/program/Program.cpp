// The order of a run. The model is read first, because the child that reads it would inherit what is open; faults of
// the input come before any output is opened; no output takes its place before all that can fail has succeeded.
#include "replay/program/Program.h"

#include "replay/files/InputFile.h"
#include "replay/files/Interrupt.h"
#include "replay/files/OutputFile.h"
#include "replay/models/ModelFile.h"
#include "replay/picture/StorySheet.h"
#include "replay/picture/Storyboard.h"
#include "replay/play/Player.h"
#include "replay/play/TraceWriter.h"
#include "replay/program/Options.h"
#include "replay/program/Outputs.h"
#include "replay/program/ProgressBar.h"
#include "replay/recording/MouseEcho.h"
#include "replay/recording/RecordingReader.h"
#include "replay/session/SessionReader.h"
#include "replay/session/SessionWriter.h"
#include "replay/story/Story.h"
#include "replay/story/StoryWriter.h"
#include "scene/MachinePart.h"

#include <algorithm>
#include <cctype>
#include <csignal>
#include <filesystem>
#include <iostream>
#include <memory>
#include <new>
#include <optional>
#include <system_error>
#include <variant>

namespace replay {

namespace {

constexpr int FaultExitCode = 2;

// A session begins with the brace of its first object; no recording does.
bool IsSession(InputFile& input) {
    return std::filesystem::path(input.GetName()).extension() == ".jsonl" || input.PeekFirst() == '{';
}

Session LoadSession(const Options& options, InputFile& input, const scene::Model& model) {
    if (IsSession(input)) {
        if (!options.recordingOptions.empty()) {
            throw UsageError(options.recordingOptions.front() + ": for recordings only, and " + input.GetName() +
                             " is a session, which says itself how it is set up");
        }
        return ReadSession(input.GetStream(), input.GetName());
    }
    RecordingOptions recordingOptions = options.recording;
    recordingOptions.bounds = model.GetBounds();
    Session session =
        SessionFromRecording(ReadRecording(input.GetStream(), input.GetName(), options.device), recordingOptions);
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
        return change != nullptr && isShapeView(*change->view);
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

// Plays the session, with its trace and its story.
void Play(Player& player, OutputFile* trace, Story* story) {
    std::optional<ProgressBar> bar;
    if (IsErrorTerminal()) {
        bar.emplace(std::cerr);
    }
    player.Play(
        [&](const Observation& observation) {
            if (trace != nullptr) {
                WriteTraceLine(observation, trace->GetStream());
                trace->Check();
            }
            if (story != nullptr) {
                story->Observe(observation, player.GetViewer().TakeSnapshot());
            }
        },
        [&](std::size_t done, std::size_t total) {
            if (bar) {
                bar->Update(done, total);
            }
        });
}

std::shared_ptr<const scene::Model> LoadModel(const Options& options) {
    if (!options.modelPath) {
        return scene::MakeMachinePart();
    }
    ModelOptions modelOptions = options.model;
    modelOptions.tellNote = [&](const std::string& note) {
        std::cerr << "touch-replay: note: " << *options.modelPath << ' ' << note << '\n';
    };
    return LoadModelFile(*options.modelPath, modelOptions);
}

void Replay(const Options& options, const ProgramSetup& setup, OutputFile& standardOutput) {
    CheckDistinct(options);
    // Before anything is opened or started that the child process would inherit.
    const std::shared_ptr<const scene::Model> model = LoadModel(options);
    InputFile input(options.file);
    const Session session = LoadSession(options, input, *model);
    CheckModelIsShown(options, session);
    const std::string plugin = FindPlugin(options, setup);
    Player player(session, plugin, model);
    if (!player.GetViewer().GetComponentState()) {
        std::cerr << "touch-replay: note: " << plugin << " does not tell the state of its workflow; gestures and modes "
                  << "are left out\n";
    }

    Outputs outputs(options);
    if (outputs.session) {
        WriteSession(session, outputs.session->GetStream());
        outputs.session->Check();
    }
    std::optional<Story> story;
    if (options.IsStoryTold() || outputs.storyboard) {
        story.emplace(session.view, player.GetViewer().TakeSnapshot(), options.window);
    }
    Play(player, outputs.trace ? &*outputs.trace : nullptr, story ? &*story : nullptr);

    const std::string title = std::filesystem::path(input.GetName()).filename().string();
    if (story) {
        story->Finish();
    }
    if (outputs.storyboard) {
        outputs.storyboard->GetStream() << DrawStoryboard(MakeSheet(*story, title, model), *options.storyboardPath);
    }
    // Nothing takes its place before everything has succeeded that still can fail.
    outputs.Finish();
    if (options.IsStoryTold()) {
        WriteStory(*story, title, standardOutput.GetStream());
        standardOutput.Finish();
    }
    outputs.Commit();
}

// A text of any origin as one line, without what a terminal would take for an order.
std::string OnOneLine(std::string text) {
    while (!text.empty() && text.back() == '\n') {
        text.pop_back();
    }
    std::replace_if(
        text.begin(), text.end(), [](char c) { return std::iscntrl(static_cast<unsigned char>(c)) != 0; }, ' ');
    return text;
}

int Fail(const std::string& text) {
    std::cerr << "touch-replay: " << OnOneLine(text) << '\n';
    return FaultExitCode;
}

}  // namespace

int RunProgram(int argc, const char* const* argv, const ProgramSetup& setup) {
    // When the reader of a pipe goes away, writing fails and that is reported like any other fault.
    std::signal(SIGPIPE, SIG_IGN);
    EndOnInterrupt();
    std::ios::sync_with_stdio(false);
    try {
        OutputFile standardOutput(StandardStreamPath);
        const std::optional<Options> options = ParseOptions(argc, argv, setup.version, standardOutput.GetStream());
        if (options) {
            Replay(*options, setup, standardOutput);
        }
        standardOutput.Finish();
        return 0;
    } catch (const std::bad_alloc&) {
        return Fail("out of memory");
    } catch (const std::exception& fault) {
        return Fail(fault.what());
    } catch (...) {
        return Fail("the component threw what is no standard exception");
    }
}

}  // namespace replay
