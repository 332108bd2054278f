// The files that a model library may read.
#pragma once

#include <assimp/IOSystem.hpp>

#include <filesystem>
#include <string>

namespace replay {

// Opens ordinary files for reading, and nothing else: no folder, pipe or device, and nothing to be written. Unless any
// references are allowed, a file lies in the model's folder or below it, wherever links lead.
class ModelFolder : public Assimp::IOSystem {
public:
    // The model's own file, with links followed.
    ModelFolder(const std::filesystem::path& model, bool anyReferences);

    [[nodiscard]] bool Exists(const char* path) const override;
    [[nodiscard]] char getOsSeparator() const override { return '/'; }
    // No value (a null pointer) for what may not be read. The library gives the stream back to Close.
    [[nodiscard]] Assimp::IOStream* Open(const char* path, const char* mode) override;
    void Close(Assimp::IOStream* stream) override;
    bool CreateDirectory(const std::string&) override { return false; }
    bool ChangeDirectory(const std::string&) override { return false; }
    bool DeleteFile(const std::string&) override { return false; }

    // The first existing file that was asked for and lies outside the folder; empty when there was none.
    [[nodiscard]] const std::string& GetRefused() const { return m_refused; }

private:
    [[nodiscard]] bool IsInside(const std::filesystem::path& file) const;

    std::filesystem::path m_folder;
    bool m_anyReferences;
    std::string m_refused;
};

}  // namespace replay
