// The bundled touch recordings by name.
#pragma once

#include "tools/motion/HandMotion.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace replay::motion {

struct Gesture {
    std::string_view name;   // file name without its extension
    std::string_view title;  // what is done, one line
    std::uint64_t seed = 0;  // of the recording's random numbers
    std::vector<FingerPath> fingers;
};

// All gestures, in the order in which they are listed.
const std::vector<Gesture>& Catalogue();

// The gesture of that name, null when there is none.
const Gesture* FindGesture(std::string_view name);

// The name of the gesture's file.
std::string FileName(const Gesture& gesture);

// The whole text of the gesture's recording.
std::string MakeRecording(const Gesture& gesture);

}  // namespace replay::motion
