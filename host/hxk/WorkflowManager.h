// Where the component stands among the workflows that hear the same messages.
#pragma once

namespace hxk {

// Ranks of workflows: a message is offered to the highest rank first.
struct WorkflowManager {
    static constexpr unsigned int TOUCHSCREEN_NAVIGATION = 1000;
};

}  // namespace hxk
