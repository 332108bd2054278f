// Where a generated session takes its decisions from: a seed, or the bytes of a fuzzer's input.
#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <limits>
#include <random>

namespace fuzz {

class Choices {
public:
    Choices() = default;
    virtual ~Choices() = default;
    Choices(const Choices&) = delete;
    Choices& operator=(const Choices&) = delete;

    // Whether there are none left; every further one is the first of its kind.
    [[nodiscard]] virtual bool AreOver() const = 0;
    // So many bytes, 1 to 4, of raw bits.
    virtual std::uint32_t Bits(int bytes) = 0;

    // One of 0 .. count - 1; count is up to 65536.
    int Below(int count) { return static_cast<int>(Bits(count <= 256 ? 1 : 2) % static_cast<std::uint32_t>(count)); }
    int Between(int low, int high) { return low + Below(high - low + 1); }
    bool Chance(int percent) { return Below(100) < percent; }
    template <class Container>
    const auto& OneOf(const Container& values) {
        return values[static_cast<std::size_t>(Below(static_cast<int>(std::size(values))))];
    }

    // Raw bits, ids as hosts use them, extremes, pixels.
    std::int32_t Integer() {
        constexpr std::int32_t smallest = std::numeric_limits<std::int32_t>::min();
        constexpr std::int32_t extremes[] = {
            smallest, smallest + 1, -1, 0, 1, std::numeric_limits<std::int32_t>::max()};
        switch (Below(4)) {
        case 0: return static_cast<std::int32_t>(Bits(4));
        case 1: return Between(-1, 12);
        case 2: return OneOf(extremes);
        default: return Between(0, 1280);
        }
    }
    std::int64_t LongInteger() {
        constexpr std::int64_t extremes[] = {std::numeric_limits<std::int64_t>::min(), -1, 0,
                                             std::numeric_limits<std::int64_t>::max()};
        if (Chance(50)) {
            return OneOf(extremes);
        }
        const std::uint64_t high = Bits(4);
        return static_cast<std::int64_t>(high << 32 | Bits(4));
    }
    // Numbers that a careful host would not have.
    double Wild() {
        constexpr double values[] = {0,
                                     -1,
                                     1e-300,
                                     1e300,
                                     std::numeric_limits<double>::max(),
                                     5e-13,
                                     -8e9,
                                     std::numeric_limits<double>::infinity(),
                                     std::numeric_limits<double>::quiet_NaN()};
        return OneOf(values);
    }
};

class RandomChoices final : public Choices {
public:
    explicit RandomChoices(std::uint32_t seed) : m_engine(seed) {}
    [[nodiscard]] bool AreOver() const override { return false; }
    std::uint32_t Bits(int bytes) override { return static_cast<std::uint32_t>(m_engine() >> (32 - 8 * bytes)); }

private:
    std::mt19937 m_engine;
};

// The bytes must outlive the choices.
class ByteChoices final : public Choices {
public:
    ByteChoices(const std::uint8_t* data, std::size_t size) : m_next(data), m_end(data + size) {}
    [[nodiscard]] bool AreOver() const override { return m_next == m_end; }
    std::uint32_t Bits(int bytes) override {
        std::uint32_t bits = 0;
        for (int i = 0; i < bytes; ++i) {
            bits = bits << 8 | (AreOver() ? 0U : *m_next++);
        }
        return bits;
    }

private:
    const std::uint8_t* m_next;
    const std::uint8_t* m_end;
};

}  // namespace fuzz
