// Looks up every entry point before it calls the first, so that a library that is no plug-in is refused unused. Only
// the query for the component's state may be missing.
#include "viewer/PluginLibrary.h"

#include "viewer/ReferenceViewer.h"

#include <stdexcept>

namespace viewer {
namespace {

[[noreturn]] void Fail(const std::string& path, const std::string& cause) {
    throw PluginError("cannot load the plug-in " + path + ": " + cause);
}

platform::DynamicLibrary Load(const std::string& path) {
    try {
        return platform::DynamicLibrary(path);
    } catch (const std::runtime_error& fault) {
        Fail(path, fault.what());
    }
}

}  // namespace

template <class Function>
Function* PluginLibrary::FindEntryPoint(const char* name) const {
    auto* address = m_library.Find<Function>(name);
    if (address == nullptr) {
        Fail(m_path, std::string("it has no entry point ") + name);
    }
    return address;
}

PluginLibrary::PluginLibrary(const std::string& path)
    : m_path(path),
      m_library(Load(m_path)),
      m_terminate(FindEntryPoint<decltype(HXDllTerminate)>("HXDllTerminate")),
      m_create(FindEntryPoint<decltype(HXDllCreateComponent)>("HXDllCreateComponent")),
      m_getState(m_library.Find<decltype(HXDllGetTouchState)>("HXDllGetTouchState")) {
    FindEntryPoint<decltype(HXDllInit)>("HXDllInit")();
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

std::optional<HXDllTouchState> PluginLibrary::GetState(const workflow::Workflow& component) const {
    HXDllTouchState state{};
    if (m_getState == nullptr || !m_getState(HXDllTouchStateVersion, &component, &state)) {
        return std::nullopt;
    }
    return state;
}

}  // namespace viewer
