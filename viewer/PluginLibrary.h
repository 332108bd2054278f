// A plug-in library that is loaded into the process.
#pragma once

#include "host/du/SmartPtr.h"
#include "host/platform/DynamicLibrary.h"
#include "host/workflow/Workflow.h"
#include "touch/Factory.h"

#include <optional>
#include <string>

namespace viewer {

// Keeps a plug-in loaded for as long as it lives. Everything that the plug-in made must be gone before that.
class PluginLibrary {
public:
    // Loads the library and calls its HXDllInit. A path without a slash is a file of the current directory, never one
    // of the system's library folders. Throws PluginError, and then nothing stays loaded.
    explicit PluginLibrary(const std::string& path);
    // Calls HXDllTerminate and unloads.
    ~PluginLibrary();
    PluginLibrary(const PluginLibrary&) = delete;
    PluginLibrary& operator=(const PluginLibrary&) = delete;

    // A new workflow "touch" for a view type, never null. Throws PluginError when the factory refuses.
    [[nodiscard]] du::SmartPtr<workflow::Workflow> CreateWorkflow(const std::string& viewType) const;

    // What a component of this plug-in does; no value where the plug-in does not tell, or not in the version known
    // here.
    [[nodiscard]] std::optional<HXDllTouchState> GetState(const workflow::Workflow& component) const;

private:
    // The exported function of this name; throws PluginError when there is none.
    template <class Function>
    [[nodiscard]] Function* FindEntryPoint(const char* name) const;

    std::string m_path;
    platform::DynamicLibrary m_library;
    decltype(HXDllTerminate)* m_terminate;
    decltype(HXDllCreateComponent)* m_create;
    decltype(HXDllGetTouchState)* m_getState;  // null where the plug-in has none
};

}  // namespace viewer
