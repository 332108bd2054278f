// The frames that are measured, by name.
#pragma once

#include "bench/BenchHost.h"
#include "host/workflow/Msg.h"

#include <cstdint>
#include <span>

namespace bench {

using Frame = workflow::TouchMsg::Integers;

enum class FrameKind : std::uint8_t {
    Floor,    // no navigation: the cost that the others are compared with
    First,    // the finger count changes, which rebuilds the finger lists and may allocate
    Resting,  // changes nothing
    Steady,   // changes the view or sends a message
};

// One measured frame. Set-up brings a fresh component to where the frame is steady; before each measured frame the
// preparation, where there is one, brings it back there without being measured.
struct FrameCase {
    const char* name;
    FrameKind kind;
    void (*setUp)(BenchHost& host);
    Frame (*prepare)(int step);  // may be null
    Frame (*frame)(int step);
};

[[nodiscard]] std::span<const FrameCase> GetFrameCases();

// Hands a frame to the workflow on the host, as the host's dispatch does.
void Deliver(BenchHost& host, const Frame& frame);

}  // namespace bench
