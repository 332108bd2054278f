// The pieces of which lines of JSON are put together: ", " and ": " between values, no other space.
#pragma once

#include "host/dg/Point.h"
#include "host/dg/Vec.h"

#include <string>
#include <string_view>
#include <vector>

namespace replay {

// A string in quotation marks. Bytes that are not UTF-8 become the replacement character.
[[nodiscard]] std::string JsonString(std::string_view text);
[[nodiscard]] std::string JsonBool(bool value);
// An array of values that are JSON text already.
[[nodiscard]] std::string JsonArray(const std::vector<std::string>& elements);
// Arrays of three numbers.
[[nodiscard]] std::string JsonPoint(const dg::DPoint3D& point);
[[nodiscard]] std::string JsonAxis(const dg::FVec3& axis);

// One JSON object, built key by key in the order of the calls.
class JsonObject {
public:
    // The value is JSON text already. Keys are not checked for repetition.
    JsonObject& Add(std::string_view key, std::string_view value);
    [[nodiscard]] std::string GetText() const { return m_text.empty() ? "{}" : m_text + "}"; }

private:
    std::string m_text;
};

}  // namespace replay
