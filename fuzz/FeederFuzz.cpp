// Bytes as the choices of a hostile toolkit: the feeder keeps its laws, and the same contacts give the same frames.
#include "fuzz/HostileContacts.h"
#include "fuzz/Require.h"

#include <cstddef>
#include <cstdint>

namespace {

constexpr int MaxEvents = 400;

std::vector<std::int64_t> Play(const std::uint8_t* data, std::size_t size) {
    fuzz::ByteChoices choices(data, size);
    std::vector<std::int64_t> sent;
    const std::string broken = fuzz::PlayHostileContacts(choices, MaxEvents, sent);
    fuzz::Require(broken.empty(), broken);
    return sent;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Require(Play(data, size) == Play(data, size), "the same contacts give the same frames");
    return 0;
}
