// Objects and arrays are put together here and not by the JSON library, because the order of keys and the spaces are
// part of the format.
#include "replay/session/JsonText.h"

#include "replay/session/JsonNumbers.h"

#include <nlohmann/json.hpp>

namespace replay {

std::string JsonString(std::string_view text) {
    return nlohmann::json(text).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

std::string JsonBool(bool value) {
    return value ? "true" : "false";
}

std::string JsonArray(const std::vector<std::string>& elements) {
    std::string text = "[";
    for (const std::string& element : elements) {
        text += (text.size() == 1 ? "" : ", ") + element;
    }
    return text + "]";
}

std::string JsonPoint(const dg::DPoint3D& point) {
    return JsonArray({JsonNumber(point.x), JsonNumber(point.y), JsonNumber(point.z)});
}

std::string JsonAxis(const dg::FVec3& axis) {
    return JsonArray({JsonNumber(axis.x), JsonNumber(axis.y), JsonNumber(axis.z)});
}

JsonObject& JsonObject::Add(std::string_view key, std::string_view value) {
    m_text += m_text.empty() ? "{" : ", ";
    m_text += JsonString(key);
    m_text += ": ";
    m_text += value;
    return *this;
}

}  // namespace replay
