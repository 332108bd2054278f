#include "replay/InputFile.h"

#include "replay/ReadError.h"

#include <cerrno>
#include <filesystem>
#include <system_error>

namespace replay {

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

}  // namespace replay
