// The replay program without its main function.
#pragma once

#include <string>

namespace replay {

// What the program knows from its build.
struct ProgramSetup {
    std::string version;
    std::string pluginBeside;  // path of the component relative to the program's folder
};

// Runs the program and answers its exit code: 0, or 2 after a fault, with one line about it on standard error.
// Ctrl-C, a hang-up or a request to end ends the process by that signal.
[[nodiscard]] int RunProgram(int argc, const char* const* argv, const ProgramSetup& setup);

}  // namespace replay
