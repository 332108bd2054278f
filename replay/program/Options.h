// The command line of the replay program.
#pragma once

#include "replay/models/ModelFile.h"
#include "replay/recording/RecordingSession.h"
#include "replay/story/GestureTracker.h"

#include <optional>
#include <ostream>
#include <stdexcept>
#include <string>
#include <vector>

namespace replay {

// The command line is not as it should be; what() is one line.
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

struct Options {
    std::string file;  // the session or recording; "-" is standard input

    // For recordings only. The bounds are those of the model, which the command line does not know.
    RecordingOptions recording;
    std::string device;  // of which a recording is: a description's file, or a name or node; may be empty
    bool mouseEcho = false;
    std::vector<std::string> recordingOptions;  // the names of those of them that were given

    std::optional<std::string> modelPath;  // no value: the built-in model
    ModelOptions model;                    // without its callbacks
    std::optional<std::string> pluginPath;
    // The outputs that are wanted; "-" is standard output, which the story leaves to them.
    std::optional<std::string> sessionPath;
    std::optional<std::string> tracePath;
    std::optional<std::string> storyboardPath;

    TimeWindow window;  // of the story and the storyboard

    [[nodiscard]] bool IsStoryTold() const { return tracePath != "-" && sessionPath != "-"; }
};

// No value when help or the version was asked for; that is then written to the output. Throws UsageError.
[[nodiscard]] std::optional<Options> ParseOptions(int argc, const char* const* argv, const std::string& version,
                                                  std::ostream& output);

}  // namespace replay
