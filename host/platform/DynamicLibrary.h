// A library that is loaded into the running process, such as a plug-in.
#pragma once

#include "host/HostApi.h"

#include <string>

namespace platform {

// Keeps a library loaded for as long as it lives. The system counts: what was opened twice is unloaded when both are
// gone.
class HOST_API DynamicLibrary {
public:
    // Loads a file, with the libraries that it needs; those are looked for beside it too. A path without a folder is a
    // file of the current directory, never one of the system's library folders. On Windows paths are UTF-8. Throws
    // std::runtime_error with the loader's words when the file cannot be loaded.
    explicit DynamicLibrary(const std::string& path);
    ~DynamicLibrary();
    DynamicLibrary(const DynamicLibrary&) = delete;
    DynamicLibrary& operator=(const DynamicLibrary&) = delete;

    // The exported function of a plain name; null when there is none. Whether the type is right nobody checks.
    template <class Function>
    [[nodiscard]] Function* Find(const char* name) const noexcept {
        return reinterpret_cast<Function*>(FindAddress(name));
    }

    // Keeps the library that has this function in it loaded until the process ends, whoever closes it. False when the
    // system refuses.
    static bool KeepLoaded(void (*function)()) noexcept;

    // Whether the file is loaded in this process, by whomever.
    [[nodiscard]] static bool IsLoaded(const std::string& path);

private:
    // A function's address: reinterpret_cast takes it to its true type without a warning, unlike a data pointer.
    using Address = void (*)();
    [[nodiscard]] Address FindAddress(const char* name) const noexcept;

    void* m_handle;
};

}  // namespace platform
