#include "replay/OutputFile.h"

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <system_error>

namespace replay {

namespace {

// Follows a link, so that the file it points to is replaced and not the link.
std::string FollowLinks(const std::string& path) {
    std::error_code fault;
    const std::filesystem::path target = std::filesystem::canonical(path, fault);
    return fault ? path : target.string();
}

bool IsSpecialFile(const std::string& path) {
    std::error_code ignored;
    const std::filesystem::file_status status = std::filesystem::status(path, ignored);
    return std::filesystem::exists(status) && !std::filesystem::is_regular_file(status);
}

// Reserves a name beside the destination that nobody uses.
std::string ReserveTemporary(const std::string& path, const std::string& destination) {
    constexpr int MostTries = 1000;
    for (int i = 0; i < MostTries; ++i) {
        std::string candidate = destination + "." + std::to_string(i) + ".part";
        if (std::FILE* file = std::fopen(candidate.c_str(), "wx")) {
            std::fclose(file);
            return candidate;
        }
        if (errno != EEXIST) {
            break;
        }
    }
    throw WriteError(path, errno);
}

}  // namespace

WriteError::WriteError(const std::string& path, int errorNumber)
    : std::runtime_error(
          path + ": cannot be written: " + std::generic_category().message(errorNumber != 0 ? errorNumber : EIO)) {}

OutputFile::OutputFile(const std::string& path) : m_path(path), m_destination(FollowLinks(path)) {
    if (std::filesystem::is_directory(m_destination)) {
        throw WriteError(path, EISDIR);
    }
    m_written = IsSpecialFile(m_destination) ? m_destination : ReserveTemporary(path, m_destination);
    errno = 0;
    m_stream.open(m_written, std::ios::binary);
    if (!m_stream) {
        const int cause = errno;
        if (IsTemporary()) {
            std::remove(m_written.c_str());
        }
        throw WriteError(path, cause);
    }
}

OutputFile::~OutputFile() {
    m_stream.close();
    if (!m_done && IsTemporary()) {
        std::remove(m_written.c_str());
    }
}

void OutputFile::Check() const {
    if (!m_stream) {
        throw WriteError(m_path, errno);
    }
}

void OutputFile::Commit() {
    Check();
    errno = 0;
    m_stream.close();
    Check();
    if (IsTemporary() && std::rename(m_written.c_str(), m_destination.c_str()) != 0) {
        throw WriteError(m_path, errno);
    }
    m_done = true;
}

}  // namespace replay
