// Where a feeder's frames, ticks and mouse messages go.
#pragma once

#include "host/du/Symbol.h"
#include "host/workflow/Msg.h"
#include "host/workflow/TouchFrame.h"

#include <cstdint>

namespace input {

// Called from TouchFeeder::Advance alone, in the order in which a component is to hear of it. Not owned by the feeder.
class FeederSink {
public:
    FeederSink() = default;
    virtual ~FeederSink();
    FeederSink(const FeederSink&) = delete;
    FeederSink& operator=(const FeederSink&) = delete;

    virtual void TakeFrame(const workflow::TouchFrame& frame) = 0;
    // Host milliseconds, and those since the tick before.
    virtual void TakeTick(std::int64_t now, std::int64_t interval) = 0;
    // An echo of the touch: the type of the message and its place in view pixels.
    virtual void TakeMouse(const du::Symbol& type, std::int32_t x, std::int32_t y) = 0;
};

// The same as messages, for a host that hands them to its workflow manager.
class MessageSink : public FeederSink {
public:
    virtual void TakeMessage(const workflow::Msg& message) = 0;

    void TakeFrame(const workflow::TouchFrame& frame) final;
    void TakeTick(std::int64_t now, std::int64_t interval) final;
    void TakeMouse(const du::Symbol& type, std::int32_t x, std::int32_t y) final;
};

}  // namespace input
