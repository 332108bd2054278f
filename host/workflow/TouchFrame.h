// A touch frame: what the host knows of all fingers at one moment.
#pragma once

#include <array>
#include <cstdint>

namespace workflow {

// The flags of a record; several may be set.
inline constexpr std::int32_t TouchMove = 1;
inline constexpr std::int32_t TouchDown = 2;
inline constexpr std::int32_t TouchUp = 4;

// One finger of a frame.
struct TouchRecord {
    std::int32_t id = -1;  // the same while the finger stays down; -1: no record
    std::int32_t x = 0;    // view pixels, origin at the lower left corner
    std::int32_t y = 0;
    std::int32_t time = 0;  // milliseconds of the touch clock
    std::int32_t flags = 0;

    friend bool operator==(const TouchRecord&, const TouchRecord&) = default;
};

// A finger count and ten records, the unused ones without id. The count is the host's own word and not limited to ten.
struct TouchFrame {
    std::int32_t count = 0;
    std::array<TouchRecord, 10> records{};

    friend bool operator==(const TouchFrame&, const TouchFrame&) = default;
};

}  // namespace workflow
