// A line is looked through before it is parsed: the parser would take the last of two equal keys and stop at a zero
// byte. A number is taken only where its type can hold it.
#include "replay/session/JsonFields.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <set>
#include <vector>

namespace replay {

namespace {

constexpr std::size_t MaxDepth = 16;        // a session nests four deep; a bound keeps hostile lines cheap
constexpr std::size_t MaxQuotedBytes = 60;  // of a text in a message

// Looks at a line before it becomes a value: the parser itself would keep the last of two equal keys.
class LineCheck : public nlohmann::json_sax<Json> {
public:
    bool null() override { return true; }
    bool boolean(bool /*value*/) override { return true; }
    bool number_integer(number_integer_t /*value*/) override { return true; }
    bool number_unsigned(number_unsigned_t /*value*/) override { return true; }
    bool number_float(number_float_t /*value*/, const string_t& /*text*/) override { return true; }
    bool string(string_t& /*value*/) override { return true; }
    bool binary(binary_t& /*value*/) override { return true; }

    bool start_object(std::size_t /*size*/) override { return Open(); }
    bool end_object() override { return Close(); }
    bool start_array(std::size_t /*size*/) override { return Open(); }
    bool end_array() override { return Close(); }

    bool key(string_t& name) override {
        if (!m_keys.back().insert(name).second) {
            throw FieldError("the key " + Quoted(name) + " stands twice");
        }
        return true;
    }

    bool parse_error(std::size_t position, const std::string& /*token*/,
                     const nlohmann::detail::exception& fault) override {
        if (dynamic_cast<const Json::out_of_range*>(&fault) != nullptr) {
            throw FieldError("column " + std::to_string(position) + ": the number is too large");
        }
        throw FieldError("column " + std::to_string(position) + ": expected JSON in UTF-8, one object on the line");
    }

private:
    bool Open() {
        if (m_keys.size() == MaxDepth) {
            throw FieldError("nested more than " + std::to_string(MaxDepth) + " deep");
        }
        m_keys.emplace_back();
        return true;
    }
    bool Close() {
        m_keys.pop_back();
        return true;
    }

    std::vector<std::set<std::string>> m_keys;  // the keys so far of every object that is open; arrays have none
};

}  // namespace

Json ParseJsonObject(const std::string& line) {
    const std::size_t start = line.find_first_not_of(" \t\r");
    if (start == std::string::npos || line[start] != '{') {
        throw FieldError("expected a JSON object");
    }
    // The parser takes a zero byte for the end of the text and would not see what follows.
    if (const std::size_t zero = line.find('\0'); zero != std::string::npos) {
        throw FieldError("column " + std::to_string(zero + 1) + ": expected text, found a zero byte");
    }
    LineCheck check;
    Json::sax_parse(line, &check);
    return Json::parse(line);
}

std::string Quoted(std::string_view text) {
    std::string shown(text.substr(0, MaxQuotedBytes));
    if (shown.size() < text.size()) {
        shown += "...";
    }
    return Json(shown).dump(-1, ' ', false, Json::error_handler_t::replace);
}

Field Field::At(std::size_t index) const {
    return {&(*value)[index], path + "[" + std::to_string(index) + "]"};
}

FieldError Field::Expected(const std::string& what) const {
    return FieldError(path + ": expected " + what);
}

ObjectFields::ObjectFields(const Field& object, std::initializer_list<std::string_view> keys)
    : m_object(object.value), m_path(object.path.empty() ? "" : object.path + ".") {
    if (!m_object->is_object()) {
        throw object.Expected("an object");
    }
    for (const auto& [key, value] : m_object->items()) {
        if (std::find(keys.begin(), keys.end(), key) == keys.end()) {
            throw FieldError((object.path.empty() ? "" : object.path + ": ") + "unknown key " + Quoted(key));
        }
    }
}

Field ObjectFields::Get(std::string_view key) const {
    if (std::optional<Field> field = Find(key)) {
        return *field;
    }
    throw FieldError(m_path + std::string(key) + ": the key is missing");
}

std::optional<Field> ObjectFields::Find(std::string_view key) const {
    const auto found = m_object->find(key);
    if (found == m_object->end()) {
        return std::nullopt;
    }
    return Field{&*found, m_path + std::string(key)};
}

bool ReadBool(const Field& field) {
    if (!field.value->is_boolean()) {
        throw field.Expected("true or false");
    }
    return field.value->get<bool>();
}

std::int64_t ReadInt64(const Field& field) {
    constexpr auto Max = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
    const bool fits =
        field.value->is_number_unsigned() ? field.value->get<std::uint64_t>() <= Max : field.value->is_number_integer();
    if (!fits) {
        throw field.Expected("a 64-bit integer");
    }
    return field.value->get<std::int64_t>();
}

std::int32_t ReadInt32(const Field& field) {
    using Limits = std::numeric_limits<std::int32_t>;
    if (field.value->is_number_integer()) {
        const std::int64_t value = ReadInt64(field);
        if (value >= Limits::min() && value <= Limits::max()) {
            return static_cast<std::int32_t>(value);
        }
    }
    throw field.Expected("a 32-bit integer");
}

std::uint32_t ReadUInt32(const Field& field) {
    if (field.value->is_number_unsigned()) {
        const auto value = field.value->get<std::uint64_t>();
        if (value <= std::numeric_limits<std::uint32_t>::max()) {
            return static_cast<std::uint32_t>(value);
        }
    }
    throw field.Expected("a 32-bit integer, 0 or more");
}

double ReadDouble(const Field& field) {
    const Json& value = *field.value;
    if (!value.is_number()) {
        throw field.Expected("a number");
    }
    // Only "-0" is parsed as a signed integer of value 0. As a double it has a sign.
    if (value.is_number_integer() && !value.is_number_unsigned() && value.get<std::int64_t>() == 0) {
        return -0.0;
    }
    return value.get<double>();
}

float ReadFloat(const Field& field) {
    const double value = ReadDouble(field);
    if (std::abs(value) > static_cast<double>(std::numeric_limits<float>::max())) {
        throw field.Expected("a number in the range of single precision");
    }
    return static_cast<float>(value);
}

std::string ReadString(const Field& field) {
    if (!field.value->is_string()) {
        throw field.Expected("a string");
    }
    return field.value->get<std::string>();
}

void ExpectArray(const Field& field, std::size_t size, const std::string& what) {
    if (!field.value->is_array() || field.value->size() != size) {
        throw field.Expected(what);
    }
}

}  // namespace replay
