// Traces are compared byte by byte: keys have a fixed order, and a number is the shortest text that reads back.
#include "replay/play/TraceWriter.h"

#include "replay/session/JsonNumbers.h"
#include "replay/session/JsonText.h"

#include <string>
#include <variant>
#include <vector>

namespace replay {

namespace {

std::string Answer(const std::optional<bool>& answer) {
    return answer ? JsonBool(*answer) : "null";
}

template <class Kind>
std::string Name(const std::optional<Kind>& kind) {
    return kind ? JsonString(NameOf(*kind)) : "null";
}

// U, V, W and the position.
std::vector<std::string> Placement(const dg::Location& location) {
    return {JsonAxis(location.GetU()), JsonAxis(location.GetV()), JsonAxis(location.GetW()),
            JsonPoint(location.GetPos())};
}

// The name of an operation and what follows it in the array.
struct CallText {
    std::vector<std::string> operator()(const viewer::PlainCall& c) const { return {JsonString(c.operation)}; }
    std::vector<std::string> operator()(const viewer::SetCameraLocationCall& c) const {
        std::vector<std::string> text = Placement(c.location);
        text.insert(text.begin(), JsonString("SetCameraLocation"));
        return text;
    }
    std::vector<std::string> operator()(const viewer::SetWidthCall& c) const {
        return {JsonString(c.operation), JsonNumber(c.width)};
    }
    std::vector<std::string> operator()(const viewer::SetPositionCall& c) const {
        return {JsonString("SetPosition"), JsonPoint(c.position)};
    }
    std::vector<std::string> operator()(const viewer::SendMessageCall& c) const {
        return {JsonString("SendMessage"), JsonString(c.type), std::to_string(c.x), std::to_string(c.y),
                Answer(c.componentAnswer)};
    }
    std::vector<std::string> operator()(const viewer::SendModeMessageCall& c) const {
        return {JsonString("SendModeMessage"), JsonString(c.workflow), JsonString(c.mode), std::to_string(c.value)};
    }
    std::vector<std::string> operator()(const viewer::SetStatusMessageCall& c) const {
        return {JsonString("SetStatusMessage"), std::to_string(c.slot), JsonString(c.text)};
    }
    std::vector<std::string> operator()(const viewer::AddMarkupCall& c) const {
        return {JsonString("AddMarkup"), JsonPoint(c.position)};
    }
    std::vector<std::string> operator()(const viewer::AddTransitionCall& c) const {
        std::vector<std::string> values;
        for (const std::int64_t value : c.values) {
            values.push_back(std::to_string(value));
        }
        JsonObject transition;
        transition.Add("start", JsonArray(Placement(c.start))).Add("end", JsonArray(Placement(c.end)));
        transition.Add("center", JsonPoint(c.center)).Add("values", JsonArray(values)).Add("flag", JsonBool(c.flag));
        return {JsonString("AddTransition"), transition.GetText()};
    }
    std::vector<std::string> operator()(const viewer::ManageObjectCall& c) const {
        return {JsonString("ManageObject"), JsonBool(c.accepted)};
    }
    std::vector<std::string> operator()(const viewer::GetBoundingBoxCall& c) const {
        return {JsonString("GetBoundingBox"), JsonBool(c.selectedOnly), JsonBool(c.visibleOnly)};
    }
    std::vector<std::string> operator()(const viewer::TraceCall& c) const {
        return {JsonString("Trace"), JsonString(c.text)};
    }
};

}  // namespace

void WriteTraceLine(const Observation& observation, std::ostream& output) {
    std::vector<std::string> calls;
    calls.reserve(observation.calls.size());
    for (const viewer::Call& call : observation.calls) {
        calls.push_back(JsonArray(std::visit(CallText{}, call)));
    }
    JsonObject line;
    line.Add("event", std::to_string(observation.number)).Add("handled", Answer(observation.handled));
    line.Add("gesture", Name(observation.gesture)).Add("state", Name(observation.state));
    line.Add("navigate", Answer(observation.navigate)).Add("calls", JsonArray(calls));
    output << line.GetText() << '\n';
}

}  // namespace replay
