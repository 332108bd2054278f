// A file that appears complete or not at all.
#pragma once

#include <fstream>
#include <ostream>
#include <stdexcept>
#include <string>

namespace replay {

// An output could not be written; what() is one line, "PATH: cannot be written: cause".
class WriteError : public std::runtime_error {
public:
    WriteError(const std::string& path, int errorNumber);
};

// Writes beside its destination and takes its place when all is there. What stood at the destination stays until then.
// A destination that is no ordinary file, such as a device or a pipe, is written to directly.
class OutputFile {
public:
    // Opens the file. Throws WriteError, for example when the folder is missing.
    explicit OutputFile(const std::string& path);
    // Removes what was written, unless it was committed.
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    // Where to write. Faults need not be looked for: Commit finds them.
    [[nodiscard]] std::ostream& GetStream() noexcept { return m_stream; }
    // Throws WriteError when something of what was written so far is lost, so that a long task can stop early.
    void Check() const;
    // The file is complete. Throws WriteError when it could not be written or put in its place; then it is removed.
    void Commit();

private:
    [[nodiscard]] bool IsTemporary() const noexcept { return m_written != m_destination; }

    std::string m_path;         // as it was given, for messages
    std::string m_destination;  // with links followed
    std::string m_written;      // the temporary file, or the destination itself
    bool m_done = false;
    std::ofstream m_stream;
};

}  // namespace replay
