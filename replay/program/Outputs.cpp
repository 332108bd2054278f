// Compares files and not names: links and standard streams can lead to a file that is read, or that another output goes
// to. This is checked before any output is opened.
#include "replay/program/Outputs.h"

#include "replay/files/InputFile.h"
#include "replay/files/Interrupt.h"

#include <array>
#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

namespace replay {

namespace {

constexpr const char* StandardOutput = "/dev/stdout";

// A file and what it is to the program: "--trace", "FILE".
struct NamedFile {
    std::string name;
    std::string path;
    std::string place;  // the path, or the device that is a standard stream
};

void AddTo(std::vector<NamedFile>& files, const char* name, const std::optional<std::string>& path,
           const char* standardStream) {
    if (path) {
        files.push_back({name, *path, *path == StandardStreamPath ? standardStream : *path});
    }
}

template <typename Action>
void ForEach(Outputs& outputs, Action action) {
    for (std::optional<OutputFile>* output : {&outputs.session, &outputs.trace, &outputs.storyboard}) {
        if (*output) {
            action(**output);
        }
    }
}

}  // namespace

void CheckDistinct(const Options& options) {
    std::vector<NamedFile> inputs;
    AddTo(inputs, "FILE", options.file, "/dev/stdin");
    // A recording's description: a file that is named, which may be something else, or one beside it that may be
    // needed.
    for (const std::string& description :
         {options.device, std::filesystem::path(options.file).replace_extension(".desc").string()}) {
        if (std::error_code ignored; std::filesystem::exists(description, ignored)) {
            AddTo(inputs, "--device", description, StandardStreamPath);
        }
    }
    AddTo(inputs, "--model", options.modelPath, StandardStreamPath);
    AddTo(inputs, "--plugin", options.pluginPath, StandardStreamPath);
    std::vector<NamedFile> outputs;
    AddTo(outputs, "the story", options.IsStoryTold() ? std::optional(StandardStreamPath) : std::nullopt,
          StandardOutput);
    AddTo(outputs, "--trace", options.tracePath, StandardOutput);
    AddTo(outputs, "--write-session", options.sessionPath, StandardOutput);
    AddTo(outputs, "--storyboard", options.storyboardPath, StandardOutput);
    for (auto output = outputs.begin(); output != outputs.end(); ++output) {
        for (const NamedFile& input : inputs) {
            if (IsSameFile(output->place, input.place)) {
                throw UsageError(output->name + ": " + output->path + " is read as " + input.name);
            }
        }
        for (auto other = outputs.begin(); other != output; ++other) {
            const bool isStandardOutput = output->path == StandardStreamPath && other->path == StandardStreamPath;
            if (isStandardOutput || IsSameFile(output->place, other->place)) {
                throw UsageError(output->name + ": " + output->path + " is written by " + other->name + " already");
            }
        }
    }
}

Outputs::Outputs(const Options& options) {
    if (options.sessionPath) {
        session.emplace(*options.sessionPath);
    }
    if (options.tracePath) {
        trace.emplace(*options.tracePath);
    }
    if (options.storyboardPath) {
        storyboard.emplace(*options.storyboardPath);
    }
}

void Outputs::Finish() {
    ForEach(*this, [](OutputFile& output) { output.Finish(); });
}

void Outputs::Commit() {
    const InterruptHold hold;
    ForEach(*this, [](OutputFile& output) { output.Commit(); });
}

}  // namespace replay
