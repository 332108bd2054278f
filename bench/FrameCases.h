// The frames that are measured, by name.
#pragma once

#include "bench/BenchHost.h"

#include <span>

namespace bench {

// One measured frame. Set-up brings a fresh component to where the frame is steady; before each measured frame the
// preparation, where there is one, brings it back there without being measured.
struct FrameCase {
    const char* name;
    void (*setUp)(BenchHost& host);
    void (*prepare)(BenchHost& host, int step);  // may be null
    void (*frame)(BenchHost& host, int step);
    bool hasEffect;     // every measured frame changes the view or sends a message
    bool isFirstFrame;  // the finger lists are rebuilt, which may allocate
};

[[nodiscard]] std::span<const FrameCase> GetFrameCases();

}  // namespace bench
