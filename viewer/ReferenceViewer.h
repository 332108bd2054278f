// A headless viewer: a complete host for the component, without any I/O or drawing.
#pragma once

#include "host/workflow/SimpleWorkflow.h"
#include "host/workflow/TouchFrame.h"
#include "scene/Model.h"
#include "touch/Factory.h"
#include "viewer/CallRecorder.h"
#include "viewer/ViewSnapshot.h"
#include "viewer/ViewSpec.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>

namespace viewer {

// The plug-in cannot be loaded or refuses to make a component; says which file and why.
class PluginError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// Owns the views, the workflow manager with the component and the viewer's own picker and selector, the transition
// queue and the answers of the platform (display, switches, strings, trace channel). The process has one platform:
// while a viewer lives it answers for all; a viewer made later takes over until it is destroyed.
//
// Every input operation answers what the component's own handler answered; no value means that the component has not
// registered the message type, or that no component is loaded.
class ReferenceViewer {
public:
    explicit ReferenceViewer(const HostSettings& settings);
    // Unloads the component if there is one.
    ~ReferenceViewer();
    ReferenceViewer(const ReferenceViewer&) = delete;
    ReferenceViewer& operator=(const ReferenceViewer&) = delete;

    // Loads the plug-in, asks its factory for the workflow "touch" of a view type and installs it. The viewer holds the
    // only reference. Throws PluginError; then nothing is loaded.
    void LoadComponent(const std::string& pluginPath, const std::string& viewType);
    // Removes the component, drops its reference, and unloads the plug-in. Nothing without a component. Box requests
    // that still wait end as failed first, for a request and the component hold each other until there is an answer.
    void UnloadComponent();
    // The installed component; null when none is loaded.
    [[nodiscard]] workflow::SimpleWorkflow* GetComponent() const noexcept;
    // What the component does, in its plug-in's words; no value where the plug-in does not tell, or none is loaded.
    [[nodiscard]] std::optional<HXDllTouchState> GetComponentState() const;

    // What shape views show and pick from; null (the default) shows nothing.
    void SetModel(std::shared_ptr<const scene::Model> model);
    [[nodiscard]] const std::shared_ptr<const scene::Model>& GetModel() const noexcept;

    // Opens a view and attaches the component to it; without a value detaches it from any view. Ends a playing
    // transition and clears what was selected. Throws std::invalid_argument, and changes nothing, for an unknown kind.
    void SetView(const std::optional<ViewSpec>& view);
    // Changes the attached shape view; nothing when another kind of view, or none, is attached. A camera that is set
    // ends a playing transition.
    void ChangeView(const ViewChange& change);

    std::optional<bool> Touch(const workflow::TouchFrame& frame);
    // First answers a waiting box request and moves a playing transition, then delivers the tick.
    std::optional<bool> Tick(std::int64_t now, std::int64_t interval);
    // The type is the name of a mouse message ("MsgMouseMove").
    std::optional<bool> Mouse(const std::string& type, int x, int y);
    std::optional<bool> SetMode(const std::string& workflowName, const std::string& mode);
    // An "update_preferences" mode message with the values as its data; without values it carries none.
    std::optional<bool> UpdatePreferences(const std::optional<PreferenceValues>& values,
                                          const std::string& workflowName);
    std::optional<bool> UpdateStatusBar();

    // The calls since the last Clear; Clear before an event and read after it.
    [[nodiscard]] CallRecorder& GetRecorder() noexcept;

    // What the attached view shows now.
    [[nodiscard]] ViewSnapshot TakeSnapshot() const;
    // The text of a status-bar slot; empty until something was written to it.
    [[nodiscard]] std::string GetStatusText(int slot) const;
    // Whether a transition is moving the camera.
    [[nodiscard]] bool IsTransitionPlaying() const noexcept;

private:
    class Impl;
    std::unique_ptr<Impl> m_impl;
};

}  // namespace viewer
