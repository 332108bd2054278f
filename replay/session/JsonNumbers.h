// Numbers as JSON text that reads back exactly.
#pragma once

#include <string>

namespace replay {

// The shortest text that reads back as the same number; a negative zero keeps its sign. JSON has no numbers that are
// not finite: they become the strings "NaN", "Infinity" and "-Infinity", with their quotation marks.
[[nodiscard]] std::string JsonNumber(double value);

// The same in single precision: 0.1f gives 0.1. The text reads back as the same float also by way of a double.
[[nodiscard]] std::string JsonNumber(float value);

}  // namespace replay
