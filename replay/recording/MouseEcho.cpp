// The echo itself is the one of live touch; here it is woven into a session.
#include "replay/recording/MouseEcho.h"

#include "input/MouseEcho.h"

#include <cstddef>
#include <iterator>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace replay {

namespace {

std::vector<Event> EventsOf(const input::MouseEvents& echoes) {
    std::vector<Event> events;
    for (std::size_t i = 0; i < echoes.count; ++i) {
        const input::MouseEvent& echo = echoes.events.at(i);
        events.emplace_back(MouseEvent{echo.type->GetString(), echo.x, echo.y});
    }
    return events;
}

}  // namespace

void AddMouseEcho(Session& session) {
    input::MouseEcho echo;
    std::vector<Event> events;
    std::vector<Event> late;
    for (Event& event : session.events) {
        std::vector<Event> echoes;
        if (const auto* touch = std::get_if<TouchEvent>(&event)) {
            echoes = EventsOf(echo.Follow(touch->frame, false));
        }
        events.push_back(std::move(event));
        std::move(late.begin(), late.end(), std::back_inserter(events));
        late = std::move(echoes);
    }
    std::move(late.begin(), late.end(), std::back_inserter(events));
    session.events = std::move(events);
}

}  // namespace replay
