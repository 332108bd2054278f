// Typed, strict access to the values of a JSON line, with messages that name the key at fault.
#pragma once

#include <nlohmann/json.hpp>

#include <array>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace replay {

using Json = nlohmann::json;

// A fault in a line. The text names the key; file and line are added by whoever knows them.
class FieldError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// Parses a line that must be one JSON object in UTF-8 and nothing else. A key that stands twice in one object and
// nesting deeper than any session needs are faults too.
[[nodiscard]] Json ParseJsonObject(const std::string& line);

// Text from a file as it may stand in a message: in quotation marks, on one line, cut off when long.
[[nodiscard]] std::string Quoted(std::string_view text);

// A value and where it stands, such as "view.camera.window". The value must outlive the field.
struct Field {
    const Json* value;
    std::string path;

    // An element of an array. The index must be below its size.
    [[nodiscard]] Field At(std::size_t index) const;
    // The fault "path: expected ...".
    [[nodiscard]] FieldError Expected(const std::string& what) const;
};

// An object of which every key is known. The value must outlive this.
class ObjectFields {
public:
    // Throws FieldError unless the field is an object with no other keys than these.
    ObjectFields(const Field& object, std::initializer_list<std::string_view> keys);

    // The value of a key that must be there.
    [[nodiscard]] Field Get(std::string_view key) const;
    // The value of a key that may be left out.
    [[nodiscard]] std::optional<Field> Find(std::string_view key) const;

private:
    const Json* m_object;
    std::string m_path;
};

// Each throws FieldError unless the value has exactly this type and range. Integers are written without fraction and
// exponent.
[[nodiscard]] bool ReadBool(const Field& field);
[[nodiscard]] std::int32_t ReadInt32(const Field& field);
[[nodiscard]] std::uint32_t ReadUInt32(const Field& field);
[[nodiscard]] std::int64_t ReadInt64(const Field& field);
[[nodiscard]] double ReadDouble(const Field& field);
[[nodiscard]] float ReadFloat(const Field& field);
[[nodiscard]] std::string ReadString(const Field& field);

// Throws FieldError unless the value is an array of this many elements; `what` completes "expected ...".
void ExpectArray(const Field& field, std::size_t size, const std::string& what);

// An array of exactly N numbers.
template <std::size_t N>
[[nodiscard]] std::array<double, N> ReadDoubles(const Field& field) {
    ExpectArray(field, N, "an array of " + std::to_string(N) + " numbers");
    std::array<double, N> numbers{};
    for (std::size_t i = 0; i < N; ++i) {
        numbers[i] = ReadDouble(field.At(i));
    }
    return numbers;
}

}  // namespace replay
