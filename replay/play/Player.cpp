// Calls are recorded event by event, so that an observation has only what came of its own event. Gesture, state and
// mode come from the plug-in by name; a name that is not known here is no value.
#include "replay/play/Player.h"

#include <string_view>
#include <utility>
#include <variant>

namespace replay {

namespace {

// A power of two, so that the test for it costs nothing.
constexpr std::size_t EventsBetweenProgress = 256;

// The view type that the component is created for. What no component knows is opened as a shape view would be.
std::string ComponentViewType(const std::optional<viewer::ViewSpec>& view) {
    return view && view->kind != "other" ? view->kind : "shapeview";
}

// The kind of that name; no value for a name that is not known here. Kinds are counted from 0.
template <class Kind>
std::optional<Kind> FindKind(std::string_view name, Kind last) {
    for (int kind = 0; kind <= static_cast<int>(last); ++kind) {
        if (NameOf(static_cast<Kind>(kind)) == name) {
            return static_cast<Kind>(kind);
        }
    }
    return std::nullopt;
}

Observation Observe(std::size_t number, std::optional<bool> handled, const Event& event,
                    viewer::ReferenceViewer& viewer) {
    Observation observation{number, handled, {}, {}, {}, viewer.GetRecorder().GetCalls(), event};
    if (const std::optional<HXDllTouchState> state = viewer.GetComponentState()) {
        observation.gesture = FindKind(state->gesture, touch::GestureMarkup);
        observation.state = FindKind(state->state, touch::GestureEnded);
        observation.navigate = std::string_view(state->mode) == "navigate";
    }
    return observation;
}

struct Delivery {
    viewer::ReferenceViewer& viewer;

    std::optional<bool> operator()(const TouchEvent& e) const { return viewer.Touch(e.frame); }
    std::optional<bool> operator()(const TimerEvent& e) const { return viewer.Tick(e.now, e.interval); }
    std::optional<bool> operator()(const MouseEvent& e) const { return viewer.Mouse(e.type, e.x, e.y); }
    std::optional<bool> operator()(const ModeEvent& e) const { return viewer.SetMode(e.workflow, e.mode); }
    std::optional<bool> operator()(const PreferencesEvent& e) const {
        return viewer.UpdatePreferences(e.values, e.workflow);
    }
    std::optional<bool> operator()(const StatusBarEvent& /*e*/) const { return viewer.UpdateStatusBar(); }
    std::optional<bool> operator()(const SetViewEvent& e) const {
        viewer.SetView(*e.view);
        return std::nullopt;
    }
    std::optional<bool> operator()(const ViewerEvent& e) const {
        viewer.ChangeView(*e.change);
        return std::nullopt;
    }
};

}  // namespace

std::optional<bool> Deliver(const Event& event, viewer::ReferenceViewer& viewer) {
    return std::visit(Delivery{viewer}, event);
}

Player::Player(const Session& session, const std::string& pluginPath, std::shared_ptr<const scene::Model> model)
    : m_session(session), m_viewer(session.host) {
    m_viewer.SetModel(std::move(model));
    m_viewer.LoadComponent(pluginPath, ComponentViewType(session.view));
    m_viewer.SetView(session.view);
}

void Player::Play(const Observer& observer, const Progress& progress) {
    viewer::CallRecorder& recorder = m_viewer.GetRecorder();
    const std::size_t total = m_session.events.size();
    for (std::size_t done = 0; done < total; ++done) {
        if (progress && done % EventsBetweenProgress == 0) {
            progress(done, total);
        }
        const Event& event = m_session.events[done];
        recorder.Clear();
        const std::optional<bool> handled = Deliver(event, m_viewer);
        observer(Observe(done + 1, handled, event, m_viewer));
    }
    if (progress) {
        progress(total, total);
    }
}

}  // namespace replay
