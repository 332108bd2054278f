// Opening files for the readers.
#pragma once

#include <cstddef>
#include <fstream>
#include <istream>
#include <streambuf>
#include <string>
#include <string_view>
#include <vector>

namespace replay {

inline constexpr const char* StandardStreamPath = "-";  // what stands for standard input or output on a command line

// Opens a file for reading, byte by byte. Throws ReadError, naming the file and the cause, for a file that is missing,
// may not be read, or is a folder.
[[nodiscard]] std::ifstream OpenInputFile(const std::string& fileName);

// An input that is opened once and read from its beginning to its end, so that it may be a pipe.
class InputFile {
public:
    // The path "-" is standard input. Throws ReadError as OpenInputFile does.
    explicit InputFile(const std::string& path);
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;

    // What messages call it: the path, or "standard input".
    [[nodiscard]] const std::string& GetName() const noexcept { return m_name; }
    [[nodiscard]] std::istream& GetStream() noexcept { return m_stream; }
    // The first character that is no white space, still to be read; 0 when there is none among the first 64 KiB. To be
    // asked for before anything is read.
    [[nodiscard]] char PeekFirst();

private:
    // Reads ahead in pieces of one size.
    class ReadAhead : public std::streambuf {
    public:
        explicit ReadAhead(std::streambuf* source) : m_source(source) {}
        // What was read and not yet taken.
        [[nodiscard]] std::string_view GetPiece() const { return {gptr(), static_cast<std::size_t>(egptr() - gptr())}; }

    protected:
        int_type underflow() override;

    private:
        std::streambuf* m_source;
        std::vector<char> m_piece;
    };

    std::string m_name;
    std::ifstream m_file;  // not open for standard input
    ReadAhead m_buffer;
    std::istream m_stream;
};

}  // namespace replay
