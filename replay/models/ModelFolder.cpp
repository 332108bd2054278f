// Takes hold of what a path leads to, asks what that is, and opens just that: a link that changes in between leads
// nowhere else.
#include "replay/models/ModelFolder.h"

#include <assimp/DefaultIOStream.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <optional>
#include <string_view>
#include <system_error>

namespace replay {

namespace {

class OpenedStream : public Assimp::DefaultIOStream {
public:
    OpenedStream(std::FILE* file, const std::string& path) : DefaultIOStream(file, path) {}
};

// Holds a place in the file system without opening what is there, so that what was checked is what is opened.
class HeldPlace {
public:
    explicit HeldPlace(const char* path) : m_descriptor(::open(path, O_PATH | O_CLOEXEC)) {}
    ~HeldPlace() {
        if (m_descriptor >= 0) {
            ::close(m_descriptor);
        }
    }
    HeldPlace(const HeldPlace&) = delete;
    HeldPlace& operator=(const HeldPlace&) = delete;

    [[nodiscard]] bool IsOrdinaryFile() const {
        struct stat about {};
        return m_descriptor >= 0 && ::fstat(m_descriptor, &about) == 0 && S_ISREG(about.st_mode);
    }
    // Opens it again through this, whatever stands under its name by now.
    [[nodiscard]] std::string GetHandle() const { return "/proc/self/fd/" + std::to_string(m_descriptor); }
    // With links followed; empty when that fails.
    [[nodiscard]] std::filesystem::path GetPath() const {
        std::error_code fault;
        const auto path = std::filesystem::read_symlink(GetHandle(), fault);
        return fault ? std::filesystem::path() : path;
    }

private:
    int m_descriptor;
};

}  // namespace

ModelFolder::ModelFolder(const std::filesystem::path& model, bool anyReferences)
    : m_folder(model.parent_path()), m_anyReferences(anyReferences) {}

bool ModelFolder::IsInside(const std::filesystem::path& file) const {
    const auto [end, inFile] = std::mismatch(m_folder.begin(), m_folder.end(), file.begin(), file.end());
    return end == m_folder.end() && inFile != file.end();
}

bool ModelFolder::Exists(const char* path) const {
    const HeldPlace place(path);
    return place.IsOrdinaryFile() && (m_anyReferences || IsInside(place.GetPath()));
}

Assimp::IOStream* ModelFolder::Open(const char* path, const char* mode) {
    const HeldPlace place(path);
    if (std::string_view(mode).find_first_of("wa+") != std::string_view::npos || !place.IsOrdinaryFile()) {
        return nullptr;
    }
    const std::filesystem::path file = place.GetPath();
    if (!m_anyReferences && !IsInside(file)) {
        m_refused = m_refused.empty() ? file.string() : m_refused;
        return nullptr;
    }
    std::FILE* opened = std::fopen(place.GetHandle().c_str(), "rbe");
    return opened != nullptr ? std::make_unique<OpenedStream>(opened, file.string()).release() : nullptr;
}

void ModelFolder::Close(Assimp::IOStream* stream) {
    const std::unique_ptr<Assimp::IOStream> closed(stream);
}

}  // namespace replay
