// A folder is refused before it is opened, for the system says so only at the first read. The first piece can be looked
// at without taking it, so that the kind of an input is found also when it comes through a pipe.
#include "replay/files/InputFile.h"

#include "replay/files/ReadError.h"

#include <cerrno>
#include <filesystem>
#include <iostream>
#include <system_error>

namespace replay {

namespace {

constexpr std::size_t PieceBytes = 65'536;

}  // namespace

std::ifstream OpenInputFile(const std::string& fileName) {
    // A folder opens without complaint and fails only when it is read, so it is asked for first.
    std::error_code ignored;
    if (std::filesystem::is_directory(fileName, ignored)) {
        throw ReadError(fileName, "cannot be read: it is a folder");
    }
    errno = 0;
    std::ifstream file(fileName, std::ios::binary);
    if (!file) {
        throw ReadError(fileName, "cannot be read: " + std::generic_category().message(errno != 0 ? errno : EIO));
    }
    return file;
}

InputFile::InputFile(const std::string& path)
    : m_name(path == StandardStreamPath ? "standard input" : path),
      m_file(path == StandardStreamPath ? std::ifstream() : OpenInputFile(path)),
      m_buffer(m_file.is_open() ? m_file.rdbuf() : std::cin.rdbuf()),
      m_stream(&m_buffer) {}

char InputFile::PeekFirst() {
    m_stream.peek();
    const std::string_view piece = m_buffer.GetPiece();
    const std::size_t first = piece.find_first_not_of(" \t\r\n\v\f");
    return first == std::string_view::npos ? '\0' : piece[first];
}

InputFile::ReadAhead::int_type InputFile::ReadAhead::underflow() {
    m_piece.resize(PieceBytes);
    const std::streamsize count = m_source->sgetn(m_piece.data(), static_cast<std::streamsize>(PieceBytes));
    setg(m_piece.data(), m_piece.data(), m_piece.data() + count);
    return count > 0 ? traits_type::to_int_type(m_piece.front()) : traits_type::eof();
}

}  // namespace replay
