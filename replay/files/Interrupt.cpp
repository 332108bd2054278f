// A signal comes at any instruction, so what its handler reads is of fixed size and lock-free, and it calls only what a
// handler may.
#include "replay/files/Interrupt.h"

#include <unistd.h>

#include <array>
#include <atomic>
#include <cstddef>

namespace replay {

namespace {

constexpr std::size_t MostFiles = 16;
constexpr std::array<int, 3> Interrupts = {SIGINT, SIGTERM, SIGHUP};

std::array<std::atomic<const char*>, MostFiles> g_files{};
static_assert(std::atomic<const char*>::is_always_lock_free, "a signal handler reads it");

// Only what is allowed inside a signal handler. All interrupts are held back meanwhile: the one that is raised takes
// its default action when this returns. SA_RESETHAND would not do, as a second interrupt could then end the program
// before the files are removed.
extern "C" void RemoveFilesAndEnd(int signal) {
    for (const std::atomic<const char*>& file : g_files) {
        if (const char* path = file.load()) {
            unlink(path);
        }
    }
    std::signal(signal, SIG_DFL);
    raise(signal);
}

sigset_t AllInterrupts() {
    sigset_t set;
    sigemptyset(&set);
    for (const int signal : Interrupts) {
        sigaddset(&set, signal);
    }
    return set;
}

void Exchange(const char* from, const char* to) noexcept {
    for (std::atomic<const char*>& file : g_files) {
        if (const char* expected = from; file.compare_exchange_strong(expected, to)) {
            return;
        }
    }
}

}  // namespace

void EndOnInterrupt() {
    for (const int signal : Interrupts) {
        struct sigaction before {};
        if (sigaction(signal, nullptr, &before) == 0 && before.sa_handler == SIG_IGN) {
            continue;
        }
        struct sigaction action {};
        action.sa_handler = RemoveFilesAndEnd;
        action.sa_mask = AllInterrupts();
        sigaction(signal, &action, nullptr);
    }
}

InterruptHold::InterruptHold() {
    const sigset_t held = AllInterrupts();
    sigprocmask(SIG_BLOCK, &held, &m_before);
}

InterruptHold::~InterruptHold() {
    sigprocmask(SIG_SETMASK, &m_before, nullptr);
}

void RemoveOnInterrupt(const std::string& path) noexcept {
    Exchange(nullptr, path.c_str());
}

void KeepOnInterrupt(const std::string& path) noexcept {
    Exchange(path.c_str(), nullptr);
}

}  // namespace replay
