// Feeds the events of a session to the component in a headless viewer.
#pragma once

#include "replay/play/Observation.h"
#include "replay/session/Session.h"
#include "scene/Model.h"
#include "viewer/ReferenceViewer.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace replay {

// How far a replay is: events done, events in all.
using Progress = std::function<void(std::size_t done, std::size_t total)>;

// Hands an event to the viewer and answers what the component answered.
std::optional<bool> Deliver(const Event& event, viewer::ReferenceViewer& viewer);

// One replay of one session. The process has one platform, so only one player is to live at a time.
class Player {
public:
    // Sets the viewer up as the session's header says, with the model in it, loads the component and attaches the first
    // view. The view keeps the bounds that the session gives, whatever the model's are. The session must outlive the
    // player; the model may be null. Throws viewer::PluginError.
    Player(const Session& session, const std::string& pluginPath, std::shared_ptr<const scene::Model> model);

    // Plays all events, once. The observer is called after each of them, the progress callback now and then. What
    // either throws ends the replay and passes on.
    void Play(const Observer& observer, const Progress& progress = {});

    [[nodiscard]] viewer::ReferenceViewer& GetViewer() noexcept { return m_viewer; }

private:
    const Session& m_session;
    viewer::ReferenceViewer m_viewer;
};

}  // namespace replay
