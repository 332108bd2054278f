// Windows and Linux under one promise: a path is that file and never a library of the system's folders, and a failure
// has the system's own words.
#include "host/platform/DynamicLibrary.h"

#include <stdexcept>

#if defined(_WIN32)

#include <windows.h>

#include <filesystem>
#include <system_error>

namespace platform {
namespace {

// An absolute path, so that the system neither searches its own folders nor takes slashes for part of a name.
std::wstring GetFullPath(const std::string& path) {
    return std::filesystem::absolute(std::u8string(path.begin(), path.end())).make_preferred().wstring();
}

}  // namespace

DynamicLibrary::DynamicLibrary(const std::string& path)
    : m_handle(LoadLibraryExW(GetFullPath(path).c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH)) {
    if (m_handle == nullptr) {
        throw std::runtime_error(std::system_category().message(static_cast<int>(GetLastError())));
    }
}

DynamicLibrary::~DynamicLibrary() {
    FreeLibrary(static_cast<HMODULE>(m_handle));
}

DynamicLibrary::Address DynamicLibrary::FindAddress(const char* name) const noexcept {
    return reinterpret_cast<Address>(GetProcAddress(static_cast<HMODULE>(m_handle), name));
}

bool DynamicLibrary::KeepLoaded(void (*function)()) noexcept {
    HMODULE module = nullptr;
    return GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_PIN,
                              reinterpret_cast<LPCWSTR>(function), &module) != 0;
}

bool DynamicLibrary::IsLoaded(const std::string& path) {
    return GetModuleHandleW(GetFullPath(path).c_str()) != nullptr;
}

}  // namespace platform

#else

#include <dlfcn.h>

#include <string_view>

namespace platform {
namespace {

// Without a slash the loader would search the system's folders.
std::string GetFilePath(const std::string& path) {
    return path.find('/') == std::string::npos ? "./" + path : path;
}

// The loader's own words, without the path with which it often begins.
std::string TakeLoaderError(const std::string& path) {
    const char* text = dlerror();
    std::string_view cause = text != nullptr ? text : "unknown error";
    if (cause.starts_with(path) && cause.substr(path.size()).starts_with(": ")) {
        cause.remove_prefix(path.size() + 2);
    }
    return std::string(cause);
}

}  // namespace

DynamicLibrary::DynamicLibrary(const std::string& path) {
    const std::string file = GetFilePath(path);
    m_handle = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (m_handle == nullptr) {
        throw std::runtime_error(TakeLoaderError(file));
    }
}

DynamicLibrary::~DynamicLibrary() {
    dlclose(m_handle);
}

DynamicLibrary::Address DynamicLibrary::FindAddress(const char* name) const noexcept {
    return reinterpret_cast<Address>(dlsym(m_handle, name));
}

bool DynamicLibrary::KeepLoaded(void (*function)()) noexcept {
    Dl_info library{};
    if (dladdr(reinterpret_cast<const void*>(function), &library) == 0) {
        return false;
    }
    void* handle = dlopen(library.dli_fname, RTLD_NOW | RTLD_NOLOAD | RTLD_NODELETE);
    return handle != nullptr && dlclose(handle) == 0;
}

bool DynamicLibrary::IsLoaded(const std::string& path) {
    void* handle = dlopen(GetFilePath(path).c_str(), RTLD_NOW | RTLD_NOLOAD);
    return handle != nullptr && dlclose(handle) == 0;
}

}  // namespace platform

#endif
