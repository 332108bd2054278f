// Frames and ticks as the messages of the host interface. Tested by tests/input/FeederMouseTest.cpp.
#include "input/FeederSink.h"

#include "host/workflow/ConstStrings.h"

namespace input {

FeederSink::~FeederSink() = default;

void MessageSink::TakeFrame(const workflow::TouchFrame& frame) {
    TakeMessage(workflow::TouchMsg(workflow::ConstStrings::MsgTouch, frame));
}

void MessageSink::TakeTick(std::int64_t now, std::int64_t interval) {
    TakeMessage(workflow::TimerMsg(workflow::ConstStrings::MsgTimer, now, interval));
}

void MessageSink::TakeMouse(const du::Symbol& type, std::int32_t x, std::int32_t y) {
    TakeMessage(workflow::MouseMsg(type, x, y, 0));
}

}  // namespace input
