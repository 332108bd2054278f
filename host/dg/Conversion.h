// Integer conversions and arithmetic that are defined for every input.
//
// A host may send any integers and any doubles. These helpers give the one answer the whole project agrees on, so that
// no operation has to think about overflow: conversions saturate, sums and products wrap around in two's complement.
#pragma once

#include <cstdint>
#include <limits>

namespace dg {

// Truncates toward zero. Values outside the range of int32_t take the nearest end of the range; NaN becomes 0.
[[nodiscard]] constexpr std::int32_t TruncateToInt32(double value) noexcept {
    if (value > -2147483648.0 && value < 2147483647.0) [[likely]] {
        return static_cast<std::int32_t>(value);
    }
    if (value != value) {
        return 0;
    }
    return value < 0 ? std::numeric_limits<std::int32_t>::min() : std::numeric_limits<std::int32_t>::max();
}

// a + b, a - b and a * b modulo 2^32.
[[nodiscard]] constexpr std::int32_t WrapAdd(std::int32_t a, std::int32_t b) noexcept {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) + static_cast<std::uint32_t>(b));
}
[[nodiscard]] constexpr std::int32_t WrapSubtract(std::int32_t a, std::int32_t b) noexcept {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) - static_cast<std::uint32_t>(b));
}
[[nodiscard]] constexpr std::int32_t WrapMultiply(std::int32_t a, std::int32_t b) noexcept {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) * static_cast<std::uint32_t>(b));
}

// a - b modulo 2^64, for host times.
[[nodiscard]] constexpr std::int64_t WrapSubtract(std::int64_t a, std::int64_t b) noexcept {
    return static_cast<std::int64_t>(static_cast<std::uint64_t>(a) - static_cast<std::uint64_t>(b));
}

// The absolute value of the wrapped difference a - b. Exact: the unsigned result also holds |-2147483648|.
[[nodiscard]] constexpr std::uint32_t AbsoluteDifference(std::int32_t a, std::int32_t b) noexcept {
    const std::int32_t difference = WrapSubtract(a, b);
    const auto bits = static_cast<std::uint32_t>(difference);
    return difference < 0 ? 0U - bits : bits;
}

}  // namespace dg
