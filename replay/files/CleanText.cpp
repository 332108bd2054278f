// Decodes UTF-8 strictly: control characters, surrogates, non-characters and bytes that spell a character longer than
// necessary count as no character, since a terminal or a drawing could take them for something else.
#include "replay/files/CleanText.h"

#include <array>
#include <cstddef>
#include <string_view>

namespace replay {
namespace {

// The number of bytes of the character at the front, or 0 for bytes that are no printable character.
std::size_t CharacterLength(std::string_view text) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned>(static_cast<unsigned char>(text[i])); };
    const unsigned lead = byte(0);
    if (lead < 0x80) {
        return lead >= 0x20 && lead != 0x7F ? 1 : 0;
    }
    const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4 || text.size() < length) {
        return 0;
    }
    unsigned code = lead & (0x7FU >> length);
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(i) & 0xC0U) != 0x80U) {
            return 0;
        }
        code = code << 6U | (byte(i) & 0x3FU);
    }
    constexpr std::array<unsigned, 5> smallest = {0, 0, 0xA0, 0x800, 0x10000};
    const bool surrogate = code >= 0xD800 && code <= 0xDFFF;
    return code >= smallest[length] && code <= 0x10FFFF && !surrogate && (code & 0xFFFEU) != 0xFFFEU ? length : 0;
}

}  // namespace

std::string CleanText(const std::string& text) {
    std::string clean;
    for (std::size_t i = 0; i < text.size();) {
        const std::size_t length = CharacterLength(std::string_view(text).substr(i));
        clean += length > 0 ? text.substr(i, length) : "?";
        i += length > 0 ? length : 1;
    }
    return clean;
}

}  // namespace replay
