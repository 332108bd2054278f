// What an interrupt leaves behind: no half-written file.
#pragma once

#include <csignal>
#include <string>

namespace replay {

// From now on Ctrl-C, a hang-up or a request to end ends the program at once, also while it waits for a file: the files
// that are named below are removed, and the program ends by that very signal. A signal that it was started to ignore
// stays ignored.
void EndOnInterrupt();

// Holds interrupts back as long as it lives; one that came meanwhile counts after that.
class InterruptHold {
public:
    InterruptHold();
    ~InterruptHold();
    InterruptHold(const InterruptHold&) = delete;
    InterruptHold& operator=(const InterruptHold&) = delete;

private:
    sigset_t m_before{};
};

// Have an interrupt remove this file, or no longer. The text must stay where it is meanwhile. Beyond 16 files the rest
// is left behind.
void RemoveOnInterrupt(const std::string& path) noexcept;
void KeepOnInterrupt(const std::string& path) noexcept;

}  // namespace replay
