// A forked child under the system's limits, and a parent that watches the clock. The child always leaves by _exit: what
// it has of the parent is neither destroyed nor flushed twice. Its exit code says which limit it met.
#include "replay/files/WorkerProcess.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <initializer_list>
#include <new>
#include <optional>
#include <string_view>
#include <system_error>

namespace replay {

namespace {

using Clock = std::chrono::steady_clock;

constexpr int OutOfMemoryExitCode = 100;
constexpr int SetUpExitCode = 101;
constexpr int ThrownExitCode = 102;
constexpr rlim_t MostOpenFiles = 64;
constexpr int WaitMs = 10;  // between two looks at the clock

WorkerError NoWorker(const std::string& step) {
    return WorkerError("no process can be started for it: " + step + ": " + std::generic_category().message(errno));
}

class Descriptor {
public:
    explicit Descriptor(int number) : m_number(number) {}
    ~Descriptor() { Close(); }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    [[nodiscard]] int Get() const { return m_number; }
    void Close() {
        if (m_number >= 0) {
            ::close(m_number);
        }
        m_number = -1;
    }

private:
    int m_number;
};

// A pipe whose ends are none of the standard descriptors, which the child gives up.
std::array<int, 2> MakePipe() {
    std::array<int, 2> low{};
    if (::pipe2(low.data(), O_CLOEXEC) != 0) {
        throw NoWorker("pipe");
    }
    std::array<int, 2> ends{};
    std::transform(low.begin(), low.end(), ends.begin(), [](int end) {
        const Descriptor closed(end);
        return ::fcntl(end, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    });
    return ends;
}

// No signal arrives while this lives, so that the child never runs a handler of the parent.
class SignalPause {
public:
    SignalPause() {
        sigset_t all;
        sigfillset(&all);
        sigprocmask(SIG_SETMASK, &all, &m_before);
    }
    ~SignalPause() { sigprocmask(SIG_SETMASK, &m_before, nullptr); }
    SignalPause(const SignalPause&) = delete;
    SignalPause& operator=(const SignalPause&) = delete;

private:
    sigset_t m_before{};
};

// A child that does not outlive this object.
class Child {
public:
    explicit Child(pid_t id) : m_id(id) {}
    ~Child() {
        if (!m_status) {
            ::kill(m_id, SIGKILL);
            ::waitpid(m_id, nullptr, 0);
        }
    }
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    // How it ended, as waitpid tells it; no value while it runs.
    std::optional<int> GetStatus() {
        int status = 0;
        if (!m_status && ::waitpid(m_id, &status, WNOHANG) == m_id) {
            m_status = status;
        }
        return m_status;
    }

private:
    pid_t m_id;
    std::optional<int> m_status;
};

// The address space that this process has taken, in bytes. What sanitizers reserve counts too, so that a limit on top
// of it holds with them as without; with them only blocks of 256 KiB and more meet it.
rlim_t MappedBytes() {
    std::ifstream file("/proc/self/statm");
    rlim_t pages = 0;
    if (!(file >> pages)) {
        throw WorkerError("no process can be started for it: /proc is not there");
    }
    return pages * static_cast<rlim_t>(::sysconf(_SC_PAGESIZE));
}

[[noreturn]] void EndOutOfMemory() {
    ::_exit(OutOfMemoryExitCode);
}

void LimitOrEnd(decltype(RLIMIT_AS) resource, rlim_t most) {
    rlimit limit{};
    if (::getrlimit(resource, &limit) != 0) {
        ::_exit(SetUpExitCode);
    }
    limit.rlim_max = std::min(most, limit.rlim_max);
    limit.rlim_cur = std::min(most, limit.rlim_cur);
    if (::setrlimit(resource, &limit) != 0) {
        ::_exit(SetUpExitCode);
    }
}

// Everything that a crash or a signal would do is left to the system: no handler, no core file, no words.
void ConfineChild(pid_t parent, rlim_t addressSpace, const WorkerLimits& limits) {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT}) {
        if (std::signal(signal, SIG_DFL) == SIG_IGN) {
            std::signal(signal, SIG_IGN);
        }
    }
    const int nothing = ::open("/dev/null", O_RDWR | O_CLOEXEC);
    for (const int standard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (nothing < 0 || ::dup2(nothing, standard) < 0) {
            ::_exit(SetUpExitCode);
        }
    }
    if (::prctl(PR_SET_PDEATHSIG, SIGKILL) != 0 || ::prctl(PR_SET_DUMPABLE, 0) != 0 || ::getppid() != parent) {
        ::_exit(SetUpExitCode);
    }
    LimitOrEnd(RLIMIT_CORE, 0);
    LimitOrEnd(RLIMIT_FSIZE, 0);
    LimitOrEnd(RLIMIT_NOFILE, MostOpenFiles);
    LimitOrEnd(RLIMIT_CPU, static_cast<rlim_t>(limits.time.count()) + 1);
    LimitOrEnd(RLIMIT_AS, addressSpace);
    std::set_new_handler(EndOutOfMemory);
}

void WriteOrEnd(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(descriptor, bytes.data(), bytes.size());
        if (written <= 0) {
            ::_exit(ThrownExitCode);
        }
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
}

// Waits until the descriptor can be read or a moment has passed. Throws when the time is over.
void WaitFor(int descriptor, Clock::time_point end, const WorkerLimits& limits) {
    pollfd wanted{descriptor, POLLIN, 0};
    ::poll(&wanted, descriptor >= 0 ? 1 : 0, WaitMs);
    if (Clock::now() > end) {
        throw WorkerError("it takes longer than " + std::to_string(limits.time.count()) + " s");
    }
}

std::string ReadAnswer(int descriptor, Clock::time_point end, const WorkerLimits& limits) {
    std::string answer;
    std::array<char, 1 << 16> block{};
    while (true) {
        WaitFor(descriptor, end, limits);
        ssize_t count = 0;
        while ((count = ::read(descriptor, block.data(), block.size())) > 0) {
            if (answer.size() + static_cast<std::size_t>(count) > limits.answerBytes) {
                throw WorkerError("it holds more than " + std::to_string(limits.answerBytes >> 20) + " MiB");
            }
            answer.append(block.data(), static_cast<std::size_t>(count));
        }
        if (count == 0) {
            return answer;
        }
        if (errno != EAGAIN && errno != EINTR) {
            throw NoWorker("read");
        }
    }
}

void CheckEnd(int status, const WorkerLimits& limits) {
    if (WIFSIGNALED(status)) {
        throw WorkerError(std::string("its reader crashed (") + ::strsignal(WTERMSIG(status)) + ")");
    }
    switch (WEXITSTATUS(status)) {
    case 0: return;
    case OutOfMemoryExitCode:
        throw WorkerError("it takes more than " + std::to_string(limits.memoryBytes >> 20) + " MiB of memory");
    case SetUpExitCode: throw WorkerError("no process can be confined for it");
    default: throw WorkerError("its reader ended early with exit code " + std::to_string(WEXITSTATUS(status)));
    }
}

}  // namespace

std::string RunInWorker(const std::function<std::string()>& work, const WorkerLimits& limits) {
    const rlim_t addressSpace = MappedBytes() + limits.memoryBytes;
    const auto [readEnd, writeEnd] = MakePipe();
    const Descriptor input(readEnd);
    Descriptor output(writeEnd);
    if (readEnd < 0 || writeEnd < 0) {
        throw NoWorker("pipe");
    }
    const pid_t parent = ::getpid();
    const Clock::time_point end = Clock::now() + limits.time;
    pid_t id = -1;
    {
        const SignalPause pause;
        id = ::fork();
        if (id == 0) {
            ConfineChild(parent, addressSpace, limits);
        }
    }
    if (id < 0) {
        throw NoWorker("fork");
    }
    if (id == 0) {
        // Nothing of the parent's is destroyed or flushed a second time, so the child never leaves this block.
        try {
            WriteOrEnd(output.Get(), work());
        } catch (...) {
            ::_exit(ThrownExitCode);
        }
        ::_exit(0);
    }
    Child child(id);
    output.Close();
    ::fcntl(input.Get(), F_SETFL, O_NONBLOCK);
    std::string answer = ReadAnswer(input.Get(), end, limits);
    while (!child.GetStatus()) {
        WaitFor(-1, end, limits);
    }
    CheckEnd(*child.GetStatus(), limits);
    return answer;
}

}  // namespace replay
