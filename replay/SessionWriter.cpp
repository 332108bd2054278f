#include "replay/SessionWriter.h"

#include "replay/JsonNumbers.h"

#include <nlohmann/json.hpp>

#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>
#include <type_traits>
#include <variant>

namespace replay {

namespace {

std::string Text(const std::string& text) {
    return nlohmann::json(text).dump();
}
std::string Bool(bool value) {
    return value ? "true" : "false";
}

std::string Array(std::initializer_list<std::string> elements) {
    std::string text;
    for (const std::string& element : elements) {
        text += (text.empty() ? "[" : ", ") + element;
    }
    return text + "]";
}

// One JSON object, built key by key.
class Object {
public:
    Object& Add(std::string_view key, const std::string& value) {
        m_text += m_text.empty() ? "{" : ", ";
        m_text += Text(std::string(key)) + ": " + value;
        return *this;
    }
    [[nodiscard]] std::string Get() const { return m_text.empty() ? "{}" : m_text + "}"; }

private:
    std::string m_text;
};

std::string Point(const dg::DPoint3D& p) {
    return Array({JsonNumber(p.x), JsonNumber(p.y), JsonNumber(p.z)});
}

std::string Axis(const dg::FVec3& v) {
    return Array({JsonNumber(v.x), JsonNumber(v.y), JsonNumber(v.z)});
}

std::string Bounds(const dg::DBox& box) {
    return box == dg::DBox::EMPTY ? "null" : Array({Point(box.min), Point(box.max)});
}

void AddPlacement(Object& object, const dg::Location& location) {
    object.Add("u", Axis(location.GetU())).Add("v", Axis(location.GetV())).Add("w", Axis(location.GetW()));
    object.Add("position", Point(location.GetPos()));
}

std::string Camera(const viewer::CameraSpec& camera) {
    Object object;
    object.Add("orthographic", Bool(camera.orthographic));
    object.Add("window", Array({JsonNumber(camera.left), JsonNumber(camera.right), JsonNumber(camera.bottom),
                                JsonNumber(camera.top)}));
    object.Add("distance", JsonNumber(camera.distance));
    AddPlacement(object, camera.location);
    return object.Get();
}

std::string Preferences(const std::optional<viewer::PreferenceValues>& values) {
    if (!values) {
        return "null";
    }
    Object object;
    for (const auto& [key, value] : *values) {
        object.Add(key, Bool(value));
    }
    return object.Get();
}

std::string View(const std::optional<viewer::ViewSpec>& view) {
    if (!view) {
        return "null";
    }
    const viewer::ViewSpec defaults;
    Object object;
    object.Add("kind", Text(view->kind));
    object.Add("size", Array({std::to_string(view->width), std::to_string(view->height)}));
    if (viewer::IsShapeViewKind(view->kind)) {
        object.Add("camera", Camera(view->camera));
        if (view->spinCenter != defaults.spinCenter) {
            object.Add("spinCenter", Point(view->spinCenter));
        }
        if (view->bounds != defaults.bounds) {
            object.Add("bounds", Bounds(view->bounds));
        }
        if (view->navMethod != defaults.navMethod) {
            object.Add("navMethod", Text(view->navMethod));
        }
        if (view->navSpeed != defaults.navSpeed) {
            object.Add("navSpeed", JsonNumber(view->navSpeed));
        }
    } else if (viewer::Is2DViewKind(view->kind)) {
        object.Add("width", JsonNumber(view->orthoWidth));
        if (view->placement != defaults.placement) {
            AddPlacement(object, view->placement);
        }
    }
    if (view->preferences) {
        object.Add("preferences", Preferences(view->preferences));
    }
    return object.Get();
}

std::string BoundsAnswerName(viewer::BoundsAnswer answer) {
    switch (answer) {
    case viewer::BoundsAnswer::NextTick: return "next-tick";
    case viewer::BoundsAnswer::Failed: return "failed";
    case viewer::BoundsAnswer::Never: return "never";
    case viewer::BoundsAnswer::Refused: return "refused";
    }
    return "?";  // a value outside the enumeration
}

std::string Environment(const std::vector<std::string>& switches) {
    std::string text = "[";
    for (std::size_t i = 0; i < switches.size(); ++i) {
        text += (i == 0 ? "" : ", ") + Text(switches[i]);
    }
    return text + "]";
}

std::string Header(const Session& session) {
    const viewer::HostSettings defaults;
    const viewer::HostSettings& host = session.host;
    Object object;
    object.Add("session", "1").Add("view", View(session.view));
    if (host.ppiX != defaults.ppiX || host.ppiY != defaults.ppiY) {
        object.Add("ppi", Array({std::to_string(host.ppiX), std::to_string(host.ppiY)}));
    }
    if (host.environment != defaults.environment) {
        object.Add("environment", Environment(host.environment));
    }
    if (host.preselectGuard != defaults.preselectGuard) {
        object.Add("preselectGuard", Bool(host.preselectGuard));
    }
    if (host.boundsAnswer != defaults.boundsAnswer) {
        object.Add("boundsAnswer", Text(BoundsAnswerName(host.boundsAnswer)));
    }
    if (host.playTransitions != defaults.playTransitions) {
        object.Add("playTransitions", Bool(host.playTransitions));
    }
    return object.Get();
}

std::string Record(const viewer::TouchRecord& r) {
    return Array({std::to_string(r.id), std::to_string(r.x), std::to_string(r.y), std::to_string(r.time),
                  std::to_string(r.flags)});
}

std::string Line(const TouchEvent& event) {
    const auto& records = event.frame.records;
    std::size_t used = records.size();
    while (used > 0 && records.at(used - 1) == viewer::TouchRecord{}) {
        --used;
    }
    std::string text = "[";
    for (std::size_t i = 0; i < used; ++i) {
        text += (i == 0 ? "" : ", ") + Record(records.at(i));
    }
    Object object;
    object.Add("touch", text + "]");
    if (event.frame.count != static_cast<std::int32_t>(used)) {
        object.Add("count", std::to_string(event.frame.count));
    }
    return object.Get();
}

std::string Line(const TimerEvent& event) {
    return Object().Add("timer", Array({std::to_string(event.now), std::to_string(event.interval)})).Get();
}

std::string Line(const MouseEvent& event) {
    return Object().Add("mouse", Array({Text(event.type), std::to_string(event.x), std::to_string(event.y)})).Get();
}

std::string Line(const ModeEvent& event) {
    return Object().Add("mode", Array({Text(event.workflow), Text(event.mode)})).Get();
}

std::string Line(const PreferencesEvent& event) {
    Object object;
    object.Add("preferences", Preferences(event.values));
    if (event.workflow != PreferencesEvent().workflow) {
        object.Add("workflow", Text(event.workflow));
    }
    return object.Get();
}

std::string Line(const StatusBarEvent& /*event*/) {
    return Object().Add("statusBar", Bool(true)).Get();
}

std::string Line(const SetViewEvent& event) {
    return Object().Add("setView", View(event.view)).Get();
}

std::string Line(const ViewerEvent& event) {
    const viewer::ViewChange& change = event.change;
    Object object;
    if (change.camera) {
        object.Add("camera", Camera(*change.camera));
    }
    if (change.spinCenter) {
        object.Add("spinCenter", Point(*change.spinCenter));
    }
    if (change.bounds) {
        object.Add("bounds", Bounds(*change.bounds));
    }
    if (change.navMethod) {
        object.Add("navMethod", Text(*change.navMethod));
    }
    if (change.navSpeed) {
        object.Add("navSpeed", JsonNumber(*change.navSpeed));
    }
    return Object().Add("viewer", object.Get()).Get();
}

}  // namespace

void WriteSession(const Session& session, std::ostream& output) {
    output << Header(session) << '\n';
    for (const Event& event : session.events) {
        output << std::visit([](const auto& e) { return Line(e); }, event) << '\n';
    }
}

}  // namespace replay
