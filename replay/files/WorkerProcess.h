// Work on input that cannot be trusted, in a process of its own.
#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <stdexcept>
#include <string>

namespace replay {

// There is no answer; what() is one line that says why.
class WorkerError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

struct WorkerLimits {
    std::chrono::seconds time{60};                   // from start to end, and of the processor
    std::size_t memoryBytes = std::size_t{2} << 30;  // beyond what this program has mapped already
    std::size_t answerBytes = std::size_t{1} << 30;
};

// Does the work in a child process and gives back the bytes that it answers, which are to be trusted as little as the
// input. The child can write no file, leaves no core file, says nothing on the terminal, and dies with this process.
// Throws WorkerError when the child crashes, meets a limit or cannot be made. Only for a process with a single thread.
[[nodiscard]] std::string RunInWorker(const std::function<std::string()>& work, const WorkerLimits& limits);

}  // namespace replay
