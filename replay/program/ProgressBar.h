// A line that shows how far a long task is.
#pragma once

#include <chrono>
#include <cstddef>
#include <ostream>
#include <string>

namespace replay {

// Draws nothing while the task is short: it appears with the first update of a task of more than 20,000 steps, or half
// a second after construction. It goes away with its destruction.
class ProgressBar {
public:
    // The output is a terminal and outlives the bar. The unit is what a step is called, in the plural.
    explicit ProgressBar(std::ostream& output, std::string unit = "events");
    ~ProgressBar();
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;

    void Update(std::size_t done, std::size_t total);

private:
    std::ostream& m_output;
    std::string m_unit;
    std::chrono::steady_clock::time_point m_start;
    std::string m_shown;  // empty while nothing is drawn
};

// Whether standard error is a terminal.
[[nodiscard]] bool IsErrorTerminal();

}  // namespace replay
