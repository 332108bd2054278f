// The event model: everything a host says to the component, in order.
#pragma once

#include "host/workflow/TouchFrame.h"
#include "viewer/ViewSpec.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace replay {

struct TouchEvent {
    workflow::TouchFrame frame;
    friend bool operator==(const TouchEvent&, const TouchEvent&) = default;
};

struct TimerEvent {
    std::int64_t now = 0;       // host milliseconds
    std::int64_t interval = 0;  // since the previous tick
    friend bool operator==(const TimerEvent&, const TimerEvent&) = default;
};

struct MouseEvent {
    std::string type;  // one of MouseMessageNames
    std::int32_t x = 0;
    std::int32_t y = 0;
    friend bool operator==(const MouseEvent&, const MouseEvent&) = default;
};

struct ModeEvent {
    std::string workflow;
    std::string mode;
    friend bool operator==(const ModeEvent&, const ModeEvent&) = default;
};

struct PreferencesEvent {
    std::optional<viewer::PreferenceValues> values;  // without a value the message carries no data
    std::string workflow = "touch";
    friend bool operator==(const PreferencesEvent&, const PreferencesEvent&) = default;
};

struct StatusBarEvent {
    friend bool operator==(const StatusBarEvent&, const StatusBarEvent&) = default;
};

// A value that is kept elsewhere, so that a rare and large kind of event does not make all events large.
template <class T>
class Boxed {
public:
    Boxed() : Boxed(T()) {}
    Boxed(T value) : m_value(std::make_shared<const T>(std::move(value))) {}  // NOLINT(google-explicit-constructor)
    const T& operator*() const noexcept { return *m_value; }
    const T* operator->() const noexcept { return m_value.get(); }
    friend bool operator==(const Boxed& a, const Boxed& b) { return *a == *b; }

private:
    std::shared_ptr<const T> m_value;  // shared between copies, as nobody changes it
};

struct SetViewEvent {
    Boxed<std::optional<viewer::ViewSpec>> view;  // without a value no view is attached
    friend bool operator==(const SetViewEvent&, const SetViewEvent&) = default;
};

struct ViewerEvent {
    Boxed<viewer::ViewChange> change;
    friend bool operator==(const ViewerEvent&, const ViewerEvent&) = default;
};

using Event = std::variant<TouchEvent, TimerEvent, MouseEvent, ModeEvent, PreferencesEvent, StatusBarEvent,
                           SetViewEvent, ViewerEvent>;

// A session: how the host is set up, which view is attached first, and what happens then.
struct Session {
    viewer::HostSettings host;
    std::optional<viewer::ViewSpec> view;  // without a value none is attached
    std::vector<Event> events;

    friend bool operator==(const Session&, const Session&) = default;
};

}  // namespace replay
