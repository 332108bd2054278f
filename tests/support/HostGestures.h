// Every kind of gesture, played on a FaultyHost from the first finger to the silence that ends the touch.
#pragma once

#include "tests/support/FaultyHost.h"

#include <string>
#include <vector>

namespace tests {

struct HostGesture {
    const char* name;
    HostSetup setup;
    // Makes a sound host ready: camera, view, mode.
    void (*prepare)(FaultyHost& host);
    // Goes on whatever the host does in between, without a component too.
    void (*play)(FaultyHost& host);
    // A call that a sound host gets from this gesture.
    HostCall reaches;
};

[[nodiscard]] const std::vector<HostGesture>& AllHostGestures();

// What the gestures are made of.
void PlaySpin(FaultyHost& host);
void PlayPinch(FaultyHost& host);
void PlayTap(FaultyHost& host);
void PlayPressAndHold(FaultyHost& host);
void PlayThreeFingerHold(FaultyHost& host);

// What harm a faulty host has done to its component, empty when none. Makes the host sound again, ends the requests
// that wait, and spins with one finger. A component that was dropped must be gone.
[[nodiscard]] std::string FindHarm(FaultyHost& host);

}  // namespace tests
