// The component through its whole message surface, in a host that misbehaves: the input's bytes are the choices of a
// hostile session. With TOUCHNAV_FUZZ_LOG set every event is written out as it begins, which shows what led to a crash.
#include "fuzz/HostileSession.h"
#include "fuzz/Require.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iostream>

namespace {

// As much as long gestures of every kind; more would be the same again, slowly.
constexpr int MaxFrames = 2000;

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::ostream* log = std::getenv("TOUCHNAV_FUZZ_LOG") != nullptr ? &std::cerr : nullptr;
    fuzz::ByteChoices choices(data, size);
    {
        fuzz::HostileSession session(choices, log);
        while (!choices.AreOver() && session.GetFrameCount() < MaxFrames) {
            session.Step();
            fuzz::Require(session.GetFault().empty(), "a sound component, but " + session.GetFault());
        }
    }
    fuzz::Require(tests::FaultyHost::CountComponents() == 0, "no component outlives its host");
    return 0;
}
