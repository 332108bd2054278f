// A file that appears complete or not at all.
#pragma once

#include <sys/types.h>

#include <ostream>
#include <stdexcept>
#include <streambuf>
#include <string>
#include <vector>

namespace replay {

// An output could not be written; what() is one line, "PATH: cannot be written: cause".
class WriteError : public std::runtime_error {
public:
    WriteError(const std::string& path, int errorNumber);
};

// Writes beside its destination and takes its place, with its permissions, when all is there. What stood at the
// destination stays until then, and an interrupt removes what was written. Links are followed, also one whose target is
// still to be made. A destination that is no ordinary file, such as a device or a pipe, is written to directly.
class OutputFile {
public:
    // Opens the file; the path "-" is standard output. Throws WriteError, for example when the folder is missing.
    explicit OutputFile(const std::string& path);
    // Removes what was written, unless it was committed.
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    // Where to write. Faults need not be looked for: Finish finds them.
    [[nodiscard]] std::ostream& GetStream() noexcept { return m_stream; }
    // Throws WriteError when something of what was written so far is lost, so that a long task can stop early.
    void Check() const;
    // All is written: hands the rest to the system. Throws WriteError when something is lost. Standard output may be
    // written to after that, and finished again.
    void Finish();
    // Puts a finished file in its place. Throws WriteError when that cannot be done; then it is removed.
    void Commit();

private:
    // Keeps the first fault, whose cause a stream forgets.
    class Buffer : public std::streambuf {
    public:
        Buffer();
        void Open(int descriptor) noexcept { m_descriptor = descriptor; }
        [[nodiscard]] int GetDescriptor() const noexcept { return m_descriptor; }
        [[nodiscard]] int GetFault() const noexcept { return m_fault; }
        // Hands over what is left and closes the file. Nothing for a file that is closed.
        void Close();

    protected:
        int_type overflow(int_type character) override;
        int sync() override;

    private:
        std::vector<char> m_bytes;
        int m_descriptor = -1;
        int m_fault = 0;  // an error number; 0: none
    };

    [[nodiscard]] bool IsTemporary() const noexcept { return m_written != m_destination; }
    // Reserves a name in the destination's folder that nobody uses, and opens it.
    void OpenTemporary(mode_t mode);

    std::string m_path;         // as it was given, for messages
    std::string m_destination;  // with links followed
    std::string m_written;      // the temporary file, or the destination itself
    bool m_done = false;
    Buffer m_buffer;
    std::ostream m_stream;
};

// Whether both paths are those of the same ordinary file, by whatever name, link or redirection; also of one that does
// not exist yet. Devices and pipes are never the same.
[[nodiscard]] bool IsSameFile(const std::string& path, const std::string& other);

}  // namespace replay
