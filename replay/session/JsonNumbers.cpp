// Shortest texts. A float whose shortest text, read as a double first, would become another float is written exactly.
#include "replay/session/JsonNumbers.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace replay {

namespace {

template <typename T>
std::string NumberText(T value) {
    if (std::isnan(value)) {
        return "\"NaN\"";
    }
    if (std::isinf(value)) {
        return value > 0 ? "\"Infinity\"" : "\"-Infinity\"";
    }
    if (value == 0 && std::signbit(value)) {
        return "-0.0";  // many readers take "-0" for an integer, which has no sign at zero
    }
    std::array<char, 32> text{};
    const auto [end, fault] = std::to_chars(text.data(), text.data() + text.size(), value);
    return {text.data(), end};
}

}  // namespace

std::string JsonNumber(double value) {
    return NumberText(value);
}

std::string JsonNumber(float value) {
    std::string text = NumberText(value);
    // Rounding twice, to double and then to single precision, can end one float away, and the shortest text of the
    // largest float is a double beyond it. The exact value is safe.
    double asDouble = 0;
    std::from_chars(text.data(), text.data() + text.size(), asDouble);
    const bool isInRange = std::abs(asDouble) <= static_cast<double>(std::numeric_limits<float>::max());
    const bool readsBack = !std::isfinite(value) || (isInRange && static_cast<float>(asDouble) == value);
    return readsBack ? text : NumberText(static_cast<double>(value));
}

}  // namespace replay
