#pragma once

namespace hxk {

// Ranks of workflows: a message is offered to the highest rank first.
struct WorkflowManager {
    static constexpr unsigned int TOUCHSCREEN_NAVIGATION = 1000;
};

}  // namespace hxk
