// The files that a run of the program writes.
#pragma once

#include "replay/files/OutputFile.h"
#include "replay/program/Options.h"

#include <optional>

namespace replay {

// Throws UsageError when an output is a file that is read, or that another output is written to.
void CheckDistinct(const Options& options);

// All outputs appear complete, or none of them does.
struct Outputs {
    // Opens those that are wanted. Throws WriteError.
    explicit Outputs(const Options& options);

    // To be called when all is written, in this order: what can fail is done before anything takes its place. Both
    // throw WriteError.
    void Finish();
    void Commit();

    std::optional<OutputFile> session;
    std::optional<OutputFile> trace;
    std::optional<OutputFile> storyboard;
};

}  // namespace replay
