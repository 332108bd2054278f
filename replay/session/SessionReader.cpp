// Strict, so that a misspelt key is a fault and not a default. An event is known by its one key, wherever that stands
// in the line.
#include "replay/session/SessionReader.h"

#include "replay/files/ReadError.h"
#include "replay/session/JsonFields.h"
#include "replay/session/ViewFields.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace replay {

namespace {

constexpr std::int32_t FormatNumber = 1;

viewer::BoundsAnswer ReadBoundsAnswer(const Field& field) {
    constexpr std::array<std::pair<std::string_view, viewer::BoundsAnswer>, 4> Names = {{
        {"next-tick", viewer::BoundsAnswer::NextTick},
        {"failed", viewer::BoundsAnswer::Failed},
        {"never", viewer::BoundsAnswer::Never},
        {"refused", viewer::BoundsAnswer::Refused},
    }};
    const std::string name = ReadString(field);
    for (const auto& [known, answer] : Names) {
        if (name == known) {
            return answer;
        }
    }
    throw field.Expected("one of \"next-tick\", \"failed\", \"never\", \"refused\"");
}

std::vector<std::string> ReadStrings(const Field& field) {
    if (!field.value->is_array()) {
        throw field.Expected("an array of strings");
    }
    std::vector<std::string> strings;
    for (std::size_t i = 0; i < field.value->size(); ++i) {
        strings.push_back(ReadString(field.At(i)));
    }
    return strings;
}

int ReadPpi(const Field& field) {
    const std::int32_t ppi = ReadInt32(field);
    if (ppi < 0) {
        throw field.Expected("0 or more pixels per inch");
    }
    return ppi;
}

void ReadHeader(const Json& line, Session& session) {
    const ObjectFields fields(
        {&line, ""}, {"session", "view", "ppi", "environment", "preselectGuard", "boundsAnswer", "playTransitions"});
    const Field format = fields.Get("session");
    if (ReadInt32(format) != FormatNumber) {
        throw format.Expected("the format number 1");
    }
    session.view = ReadView(fields.Get("view"));
    if (const auto ppi = fields.Find("ppi")) {
        ExpectArray(*ppi, 2, "pixels per inch, horizontally and vertically");
        session.host.ppiX = ReadPpi(ppi->At(0));
        session.host.ppiY = ReadPpi(ppi->At(1));
    }
    if (const auto environment = fields.Find("environment")) {
        session.host.environment = ReadStrings(*environment);
    }
    if (const auto guard = fields.Find("preselectGuard")) {
        session.host.preselectGuard = ReadBool(*guard);
    }
    if (const auto answer = fields.Find("boundsAnswer")) {
        session.host.boundsAnswer = ReadBoundsAnswer(*answer);
    }
    if (const auto play = fields.Find("playTransitions")) {
        session.host.playTransitions = ReadBool(*play);
    }
}

workflow::TouchRecord ReadTouchRecord(const Field& field) {
    ExpectArray(field, 5, "the five integers [id, x, y, time, flags]");
    return {ReadInt32(field.At(0)), ReadInt32(field.At(1)), ReadInt32(field.At(2)), ReadInt32(field.At(3)),
            ReadInt32(field.At(4))};
}

Event ReadTouch(const Json& line) {
    const ObjectFields fields({&line, ""}, {"touch", "count"});
    const Field records = fields.Get("touch");
    TouchEvent event;
    if (!records.value->is_array() || records.value->size() > event.frame.records.size()) {
        throw records.Expected("an array of up to ten records");
    }
    for (std::size_t i = 0; i < records.value->size(); ++i) {
        event.frame.records.at(i) = ReadTouchRecord(records.At(i));
    }
    const auto count = fields.Find("count");
    event.frame.count = count ? ReadInt32(*count) : static_cast<std::int32_t>(records.value->size());
    return event;
}

Event ReadTimer(const Json& line) {
    const Field field = ObjectFields({&line, ""}, {"timer"}).Get("timer");
    ExpectArray(field, 2, "the two integers [now, interval]");
    return TimerEvent{ReadInt64(field.At(0)), ReadInt64(field.At(1))};
}

Event ReadMouse(const Json& line) {
    const Field field = ObjectFields({&line, ""}, {"mouse"}).Get("mouse");
    ExpectArray(field, 3, "[message type, x, y]");
    std::string type = ReadString(field.At(0));
    if (std::find(MouseMessageNames.begin(), MouseMessageNames.end(), type) == MouseMessageNames.end()) {
        throw FieldError(field.path + "[0]: unknown mouse message " + Quoted(type));
    }
    return MouseEvent{std::move(type), ReadInt32(field.At(1)), ReadInt32(field.At(2))};
}

Event ReadMode(const Json& line) {
    const Field field = ObjectFields({&line, ""}, {"mode"}).Get("mode");
    ExpectArray(field, 2, "[workflow name, mode name]");
    return ModeEvent{ReadString(field.At(0)), ReadString(field.At(1))};
}

Event ReadPreferencesEvent(const Json& line) {
    const ObjectFields fields({&line, ""}, {"preferences", "workflow"});
    PreferencesEvent event;
    event.values = ReadPreferences(fields.Get("preferences"));
    if (const auto workflow = fields.Find("workflow")) {
        event.workflow = ReadString(*workflow);
    }
    return event;
}

Event ReadStatusBar(const Json& line) {
    const Field field = ObjectFields({&line, ""}, {"statusBar"}).Get("statusBar");
    if (!field.value->is_boolean() || !field.value->get<bool>()) {
        throw field.Expected("true");
    }
    return StatusBarEvent{};
}

Event ReadSetView(const Json& line) {
    return SetViewEvent{ReadView(ObjectFields({&line, ""}, {"setView"}).Get("setView"))};
}

Event ReadViewer(const Json& line) {
    return ViewerEvent{ReadViewChange(ObjectFields({&line, ""}, {"viewer"}).Get("viewer"))};
}

struct EventKind {
    const char* key;
    Event (*read)(const Json& line);
};

constexpr std::array<EventKind, 8> EventKinds = {{{"touch", ReadTouch},
                                                  {"timer", ReadTimer},
                                                  {"mouse", ReadMouse},
                                                  {"mode", ReadMode},
                                                  {"preferences", ReadPreferencesEvent},
                                                  {"statusBar", ReadStatusBar},
                                                  {"setView", ReadSetView},
                                                  {"viewer", ReadViewer}}};

Event ReadEvent(const Json& line) {
    const EventKind* kind = nullptr;
    for (const EventKind& candidate : EventKinds) {
        if (!line.contains(candidate.key)) {
            continue;
        }
        if (kind != nullptr) {
            throw FieldError("expected one event, found " + Quoted(kind->key) + " and " + Quoted(candidate.key));
        }
        kind = &candidate;
    }
    if (kind == nullptr) {
        throw FieldError("expected an event: touch, timer, mouse, mode, preferences, statusBar, setView or viewer");
    }
    return kind->read(line);
}

bool IsBlank(const std::string& line) {
    return line.find_first_not_of(" \t\r") == std::string::npos;
}

}  // namespace

Session ReadSession(std::istream& input, const std::string& fileName) {
    Session session;
    std::string line;
    std::size_t number = 0;
    std::size_t blank = 0;  // the first of the empty lines just passed
    bool headerRead = false;
    while (std::getline(input, line)) {
        ++number;
        if (IsBlank(line)) {
            blank = blank == 0 ? number : blank;
            continue;
        }
        if (blank != 0) {
            throw ReadError(fileName, blank, "expected a JSON object, found an empty line");
        }
        try {
            const Json object = ParseJsonObject(line);
            if (headerRead) {
                session.events.push_back(ReadEvent(object));
            } else {
                ReadHeader(object, session);
                headerRead = true;
            }
        } catch (const FieldError& fault) {
            throw ReadError(fileName, number, fault.what());
        }
    }
    if (input.bad()) {
        throw ReadError(fileName, number + 1, "cannot be read any further");
    }
    if (!headerRead) {
        throw ReadError(fileName, 1, "expected the header of a session, found no text");
    }
    return session;
}

}  // namespace replay
