// Opening files for the readers.
#pragma once

#include <fstream>
#include <string>

namespace replay {

// Opens a file for reading, byte by byte. Throws ReadError, naming the file and the cause, for a file that is missing,
// may not be read, or is a folder.
[[nodiscard]] std::ifstream OpenInputFile(const std::string& fileName);

}  // namespace replay
