#include "viewer/PluginLibrary.h"

#include "viewer/ReferenceViewer.h"

#include <dlfcn.h>

#include <string_view>

namespace viewer {
namespace {

[[noreturn]] void Fail(const std::string& path, const std::string& cause) {
    throw PluginError("cannot load the plug-in " + path + ": " + cause);
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

PluginLibrary::Handle::Handle(const std::string& path) : m_path(path) {
    // Without a slash the loader would search the system's folders.
    const std::string file = path.find('/') == std::string::npos ? "./" + path : path;
    m_library = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (m_library == nullptr) {
        Fail(path, TakeLoaderError(file));
    }
}

PluginLibrary::Handle::~Handle() {
    dlclose(m_library);
}

void* PluginLibrary::Handle::FindAddress(const char* name) const {
    void* address = dlsym(m_library, name);
    if (address == nullptr) {
        Fail(m_path, std::string("it has no entry point ") + name);
    }
    return address;
}

PluginLibrary::PluginLibrary(const std::string& path)
    : m_path(path),
      m_handle(m_path),
      m_terminate(m_handle.Find<decltype(HXDllTerminate)>("HXDllTerminate")),
      m_create(m_handle.Find<decltype(HXDllCreateComponent)>("HXDllCreateComponent")) {
    m_handle.Find<decltype(HXDllInit)>("HXDllInit")();
}

PluginLibrary::~PluginLibrary() {
    m_terminate();
}

du::SmartPtr<workflow::Workflow> PluginLibrary::CreateWorkflow(const std::string& viewType) const {
    du::SmartPtr<workflow::Workflow> workflow;
    if (!m_create(viewType, "workflow", "touch", workflow) || !workflow) {
        throw PluginError("the plug-in " + m_path + " makes no workflow \"touch\" for the view type \"" + viewType +
                          "\"");
    }
    return workflow;
}

}  // namespace viewer
