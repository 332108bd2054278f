// Writes only when the text has changed, so that a long task is not slowed down by the terminal.
#include "replay/program/ProgressBar.h"

#include <unistd.h>

#include <utility>

namespace replay {

namespace {

constexpr std::chrono::milliseconds Patience{500};
constexpr std::size_t ManySteps = 20'000;
constexpr std::size_t BarColumns = 30;

}  // namespace

ProgressBar::ProgressBar(std::ostream& output, std::string unit)
    : m_output(output), m_unit(std::move(unit)), m_start(std::chrono::steady_clock::now()) {}

ProgressBar::~ProgressBar() {
    if (!m_shown.empty()) {
        m_output << '\r' << std::string(m_shown.size(), ' ') << '\r' << std::flush;
    }
}

void ProgressBar::Update(std::size_t done, std::size_t total) {
    if (total == 0 || (total <= ManySteps && std::chrono::steady_clock::now() - m_start < Patience)) {
        return;
    }
    const std::size_t percent = 100 * done / total;
    const std::size_t filled = BarColumns * done / total;
    const std::string text = "[" + std::string(filled, '#') + std::string(BarColumns - filled, '.') + "] " +
                             std::to_string(percent) + " % of " + std::to_string(total) + " " + m_unit;
    if (text != m_shown) {
        m_shown = text;
        m_output << '\r' << text << std::flush;
    }
}

bool IsErrorTerminal() {
    return isatty(STDERR_FILENO) == 1;
}

}  // namespace replay
