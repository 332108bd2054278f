// Leaves out what has its default, so that a header says only what is special about its session.
#include "replay/session/SessionWriter.h"

#include "replay/session/JsonNumbers.h"
#include "replay/session/JsonText.h"

#include <cstddef>
#include <string>
#include <type_traits>
#include <variant>

namespace replay {

namespace {

std::string Bounds(const dg::DBox& box) {
    return box == dg::DBox::EMPTY ? "null" : JsonArray({JsonPoint(box.min), JsonPoint(box.max)});
}

void AddPlacement(JsonObject& object, const dg::Location& location) {
    object.Add("u", JsonAxis(location.GetU())).Add("v", JsonAxis(location.GetV())).Add("w", JsonAxis(location.GetW()));
    object.Add("position", JsonPoint(location.GetPos()));
}

std::string Camera(const viewer::CameraSpec& camera) {
    JsonObject object;
    object.Add("orthographic", JsonBool(camera.orthographic));
    object.Add("window", JsonArray({JsonNumber(camera.left), JsonNumber(camera.right), JsonNumber(camera.bottom),
                                    JsonNumber(camera.top)}));
    object.Add("distance", JsonNumber(camera.distance));
    AddPlacement(object, camera.location);
    return object.GetText();
}

std::string Preferences(const std::optional<viewer::PreferenceValues>& values) {
    if (!values) {
        return "null";
    }
    JsonObject object;
    for (const auto& [key, value] : *values) {
        object.Add(key, JsonBool(value));
    }
    return object.GetText();
}

std::string View(const std::optional<viewer::ViewSpec>& view) {
    if (!view) {
        return "null";
    }
    const viewer::ViewSpec defaults;
    JsonObject object;
    object.Add("kind", JsonString(view->kind));
    object.Add("size", JsonArray({std::to_string(view->width), std::to_string(view->height)}));
    if (viewer::IsShapeViewKind(view->kind)) {
        object.Add("camera", Camera(view->camera));
        if (view->spinCenter != defaults.spinCenter) {
            object.Add("spinCenter", JsonPoint(view->spinCenter));
        }
        if (view->bounds != defaults.bounds) {
            object.Add("bounds", Bounds(view->bounds));
        }
        if (view->navMethod != defaults.navMethod) {
            object.Add("navMethod", JsonString(view->navMethod));
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
    return object.GetText();
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
        text += (i == 0 ? "" : ", ") + JsonString(switches[i]);
    }
    return text + "]";
}

std::string Header(const Session& session) {
    const viewer::HostSettings defaults;
    const viewer::HostSettings& host = session.host;
    JsonObject object;
    object.Add("session", "1").Add("view", View(session.view));
    if (host.ppiX != defaults.ppiX || host.ppiY != defaults.ppiY) {
        object.Add("ppi", JsonArray({std::to_string(host.ppiX), std::to_string(host.ppiY)}));
    }
    if (host.environment != defaults.environment) {
        object.Add("environment", Environment(host.environment));
    }
    if (host.preselectGuard != defaults.preselectGuard) {
        object.Add("preselectGuard", JsonBool(host.preselectGuard));
    }
    if (host.boundsAnswer != defaults.boundsAnswer) {
        object.Add("boundsAnswer", JsonString(BoundsAnswerName(host.boundsAnswer)));
    }
    if (host.playTransitions != defaults.playTransitions) {
        object.Add("playTransitions", JsonBool(host.playTransitions));
    }
    return object.GetText();
}

std::string Record(const workflow::TouchRecord& r) {
    return JsonArray({std::to_string(r.id), std::to_string(r.x), std::to_string(r.y), std::to_string(r.time),
                      std::to_string(r.flags)});
}

std::string Line(const TouchEvent& event) {
    const auto& records = event.frame.records;
    std::size_t used = records.size();
    while (used > 0 && records.at(used - 1) == workflow::TouchRecord{}) {
        --used;
    }
    std::string text = "[";
    for (std::size_t i = 0; i < used; ++i) {
        text += (i == 0 ? "" : ", ") + Record(records.at(i));
    }
    JsonObject object;
    object.Add("touch", text + "]");
    if (event.frame.count != static_cast<std::int32_t>(used)) {
        object.Add("count", std::to_string(event.frame.count));
    }
    return object.GetText();
}

std::string Line(const TimerEvent& event) {
    return JsonObject().Add("timer", JsonArray({std::to_string(event.now), std::to_string(event.interval)})).GetText();
}

std::string Line(const MouseEvent& event) {
    return JsonObject()
        .Add("mouse", JsonArray({JsonString(event.type), std::to_string(event.x), std::to_string(event.y)}))
        .GetText();
}

std::string Line(const ModeEvent& event) {
    return JsonObject().Add("mode", JsonArray({JsonString(event.workflow), JsonString(event.mode)})).GetText();
}

std::string Line(const PreferencesEvent& event) {
    JsonObject object;
    object.Add("preferences", Preferences(event.values));
    if (event.workflow != PreferencesEvent().workflow) {
        object.Add("workflow", JsonString(event.workflow));
    }
    return object.GetText();
}

std::string Line(const StatusBarEvent& /*event*/) {
    return JsonObject().Add("statusBar", JsonBool(true)).GetText();
}

std::string Line(const SetViewEvent& event) {
    return JsonObject().Add("setView", View(*event.view)).GetText();
}

std::string Line(const ViewerEvent& event) {
    const viewer::ViewChange& change = *event.change;
    JsonObject object;
    if (change.camera) {
        object.Add("camera", Camera(*change.camera));
    }
    if (change.spinCenter) {
        object.Add("spinCenter", JsonPoint(*change.spinCenter));
    }
    if (change.bounds) {
        object.Add("bounds", Bounds(*change.bounds));
    }
    if (change.navMethod) {
        object.Add("navMethod", JsonString(*change.navMethod));
    }
    if (change.navSpeed) {
        object.Add("navSpeed", JsonNumber(*change.navSpeed));
    }
    return JsonObject().Add("viewer", object.GetText()).GetText();
}

}  // namespace

void WriteSession(const Session& session, std::ostream& output) {
    output << Header(session) << '\n';
    for (const Event& event : session.events) {
        output << std::visit([](const auto& e) { return Line(e); }, event) << '\n';
    }
}

}  // namespace replay
