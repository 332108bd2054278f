// Messages: a type name and the arguments of the handler of that name.
#pragma once

#include "host/du/RefCounted.h"
#include "host/du/SmartPtr.h"
#include "host/du/Symbol.h"
#include "host/workflow/TouchFrame.h"

#include <array>
#include <cstddef>

namespace workflow {

// A message without arguments, and the base of the others. Messages live on the sender's stack and are not kept.
class Msg {
public:
    // What a message carries; a handler is only called with a message that carries its arguments. Only the classes
    // below say that they carry something, so that what is read is there.
    enum class Content { None, Mouse, Touch, Timer, Mode };

    explicit Msg(const du::Symbol& type) noexcept : Msg(type, Content::None) {}

    [[nodiscard]] const du::Symbol& GetType() const noexcept { return m_type; }
    [[nodiscard]] Content GetContent() const noexcept { return m_content; }

private:
    friend class MouseMsg;
    friend class TouchMsg;
    friend class TimerMsg;
    friend class ModeMsg;

    Msg(const du::Symbol& type, Content content) noexcept : m_type(type), m_content(content) {}

    du::Symbol m_type;
    Content m_content;
};

// A mouse message at a place in view pixels (origin at the lower left corner, y upward).
class MouseMsg : public Msg {
public:
    MouseMsg(const du::Symbol& type, int x, int y, short modifiers) noexcept
        : Msg(type, Content::Mouse), m_x(x), m_y(y), m_modifiers(modifiers) {}

    [[nodiscard]] int GetX() const noexcept { return m_x; }
    [[nodiscard]] int GetY() const noexcept { return m_y; }
    // The keys held, as a bit set; 0 for none.
    [[nodiscard]] short GetModifiers() const noexcept { return m_modifiers; }

private:
    int m_x;
    int m_y;
    short m_modifiers;
};

// A touch frame: the 52 integers of the touch handler, in its order.
class TouchMsg : public Msg {
public:
    static constexpr int IntegerCount = 52;
    using Integers = std::array<int, IntegerCount>;

    TouchMsg(const du::Symbol& type, const Integers& integers) noexcept
        : Msg(type, Content::Touch), m_integers(integers) {}
    TouchMsg(const du::Symbol& type, const TouchFrame& frame) noexcept
        : Msg(type, Content::Touch), m_integers(Pack(frame)) {}

    [[nodiscard]] const Integers& GetIntegers() const noexcept { return m_integers; }

private:
    // A reserved integer, the count, and five integers a record.
    [[nodiscard]] static Integers Pack(const TouchFrame& frame) noexcept {
        Integers integers{};
        integers[1] = frame.count;
        std::size_t next = 2;
        for (const TouchRecord& record : frame.records) {
            for (const int value : {record.id, record.x, record.y, record.time, record.flags}) {
                integers[next++] = value;
            }
        }
        return integers;
    }

    Integers m_integers;
};

// A timer tick.
class TimerMsg : public Msg {
public:
    TimerMsg(const du::Symbol& type, long long now, long long interval) noexcept
        : Msg(type, Content::Timer), m_now(now), m_interval(interval) {}

    // Host milliseconds.
    [[nodiscard]] long long GetNow() const noexcept { return m_now; }
    // Milliseconds since the previous tick.
    [[nodiscard]] long long GetInterval() const noexcept { return m_interval; }

private:
    long long m_now;
    long long m_interval;
};

// A mode switch, addressed to a workflow by name.
class ModeMsg : public Msg {
public:
    ModeMsg(const du::Symbol& type, const du::Symbol& workflowName, const du::Symbol& mode,
            const du::SmartPtr<du::RefCounted>& data, int value)
        : Msg(type, Content::Mode), m_workflowName(workflowName), m_mode(mode), m_data(data), m_value(value) {}

    [[nodiscard]] const du::Symbol& GetWorkflowName() const noexcept { return m_workflowName; }
    [[nodiscard]] const du::Symbol& GetMode() const noexcept { return m_mode; }
    [[nodiscard]] const du::SmartPtr<du::RefCounted>& GetData() const noexcept { return m_data; }
    [[nodiscard]] int GetValue() const noexcept { return m_value; }

private:
    du::Symbol m_workflowName;
    du::Symbol m_mode;
    du::SmartPtr<du::RefCounted> m_data;
    int m_value;
};

}  // namespace workflow
