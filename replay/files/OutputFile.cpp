// Writes to a temporary file in the destination's folder, because a file can take another's place at one stroke only
// within a file system. Keeps the first fault of the system, for a stream does not say why it has failed.
#include "replay/files/OutputFile.h"

#include "replay/files/InputFile.h"
#include "replay/files/Interrupt.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <system_error>

namespace replay {

namespace {

constexpr std::size_t BufferBytes = 65'536;
constexpr mode_t PermissionBits = 0777;
constexpr mode_t NewFileMode = 0666;  // less what the user's mask takes away
constexpr mode_t PrivateMode = 0600;

// Where a path leads, links followed, also where there is no file yet.
std::filesystem::path FollowLinks(std::filesystem::path path) {
    constexpr int MostLinks = 40;  // as many as the system follows
    std::error_code fault;
    for (int i = 0; i < MostLinks && std::filesystem::is_symlink(path, fault); ++i) {
        if (auto whole = std::filesystem::canonical(path, fault); !fault) {
            return whole;
        }
        path = path.parent_path() / std::filesystem::read_symlink(path, fault);
    }
    return path;
}

// Of a file that does not exist yet: the same place becomes the same file.
std::filesystem::path PlaceOf(const std::string& path) {
    return std::filesystem::weakly_canonical(std::filesystem::absolute(FollowLinks(path)));
}

// No value where there is no such file; errno tells why.
std::optional<struct stat> StatusOf(const std::string& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 ? std::optional(status) : std::nullopt;
}

}  // namespace

WriteError::WriteError(const std::string& path, int errorNumber)
    : std::runtime_error(
          path + ": cannot be written: " + std::generic_category().message(errorNumber != 0 ? errorNumber : EIO)) {}

OutputFile::OutputFile(const std::string& path)
    : m_path(path), m_destination(FollowLinks(path).string()), m_written(m_destination), m_stream(&m_buffer) {
    if (path == StandardStreamPath) {
        m_path = "standard output";
        m_buffer.Open(STDOUT_FILENO);
        return;
    }
    const std::optional<struct stat> status = StatusOf(m_destination);
    if (!status && errno != ENOENT) {
        throw WriteError(path, errno);
    }
    if (status && S_ISDIR(status->st_mode)) {
        throw WriteError(path, EISDIR);
    }
    // Another file can take the place of one that may not be written, so this has to be asked for.
    if (status && access(m_destination.c_str(), W_OK) != 0) {
        throw WriteError(path, errno);
    }
    if (!status || S_ISREG(status->st_mode)) {
        OpenTemporary(status ? PrivateMode : NewFileMode);
    } else {
        m_buffer.Open(open(m_destination.c_str(), O_WRONLY | O_CLOEXEC));
    }
    if (m_buffer.GetDescriptor() < 0) {
        throw WriteError(path, errno);
    }
    if (status && IsTemporary()) {
        // The owner is kept where that is allowed; changing it takes permissions away, so they come second.
        static_cast<void>(!fchown(m_buffer.GetDescriptor(), status->st_uid, status->st_gid));
        static_cast<void>(fchmod(m_buffer.GetDescriptor(), status->st_mode & PermissionBits));
    }
}

void OutputFile::OpenTemporary(mode_t mode) {
    constexpr int MostTries = 1000;
    const std::filesystem::path folder = std::filesystem::path(m_destination).parent_path();
    const InterruptHold hold;
    for (int i = 0; i < MostTries; ++i) {
        // Not longer than the name of any file may be.
        const std::string candidate = (folder / ("touch-replay-" + std::to_string(i) + ".part")).string();
        m_buffer.Open(open(candidate.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode));
        if (m_buffer.GetDescriptor() >= 0) {
            m_written = candidate;
            RemoveOnInterrupt(m_written);
            return;
        }
        if (errno != EEXIST) {
            return;
        }
    }
}

OutputFile::~OutputFile() {
    m_buffer.Close();
    if (!m_done && IsTemporary()) {
        unlink(m_written.c_str());
        KeepOnInterrupt(m_written);
    }
}

void OutputFile::Check() const {
    if (m_buffer.GetFault() != 0) {
        throw WriteError(m_path, m_buffer.GetFault());
    }
}

void OutputFile::Finish() {
    if (m_buffer.GetDescriptor() == STDOUT_FILENO) {
        m_stream.flush();
    } else {
        m_buffer.Close();
    }
    Check();
}

void OutputFile::Commit() {
    const InterruptHold hold;
    if (IsTemporary() && std::rename(m_written.c_str(), m_destination.c_str()) != 0) {
        throw WriteError(m_path, errno);
    }
    KeepOnInterrupt(m_written);
    m_done = true;
}

OutputFile::Buffer::Buffer() : m_bytes(BufferBytes) {
    setp(m_bytes.data(), m_bytes.data() + m_bytes.size());
}

OutputFile::Buffer::int_type OutputFile::Buffer::overflow(int_type character) {
    if (sync() != 0) {
        return traits_type::eof();
    }
    if (!traits_type::eq_int_type(character, traits_type::eof())) {
        sputc(traits_type::to_char_type(character));
    }
    return traits_type::not_eof(character);
}

int OutputFile::Buffer::sync() {
    for (const char* next = pbase(); m_fault == 0 && next < pptr();) {
        const ssize_t count = write(m_descriptor, next, static_cast<std::size_t>(pptr() - next));
        if (count >= 0) {
            next += count;
        } else if (errno != EINTR) {
            m_fault = errno;
        }
    }
    setp(m_bytes.data(), m_bytes.data() + m_bytes.size());
    return m_fault == 0 ? 0 : -1;
}

void OutputFile::Buffer::Close() {
    if (m_descriptor < 0 || m_descriptor == STDOUT_FILENO) {
        return;
    }
    sync();
    if (close(m_descriptor) != 0 && m_fault == 0) {
        m_fault = errno;
    }
    m_descriptor = -1;
}

bool IsSameFile(const std::string& path, const std::string& other) {
    const std::optional<struct stat> a = StatusOf(path);
    const std::optional<struct stat> b = StatusOf(other);
    if (a && b) {
        return S_ISREG(a->st_mode) && a->st_dev == b->st_dev && a->st_ino == b->st_ino;
    }
    return !a && !b && PlaceOf(path) == PlaceOf(other);
}

}  // namespace replay
