// Interned names.
#pragma once

#include "host/HostApi.h"

#include <string>
#include <string_view>

namespace du {

// An immutable name that is stored once per process: two Symbols of equal text share their storage, also when one was
// made by the host and the other by a plug-in. Copying and comparing cost as much as a pointer. Names live until the
// process ends. Case matters.
class HOST_API Symbol {
public:
    // The empty name.
    Symbol() noexcept;
    // Interns the text; a null pointer gives the empty name.
    explicit Symbol(const char* text);

    // The text; valid until the process ends.
    [[nodiscard]] const std::string& GetString() const noexcept { return *m_text; }

private:
    const std::string* m_text;  // in the process-wide table, never null
};

// Whether two names are the same; a null text equals no name.
[[nodiscard]] inline bool operator==(const Symbol& a, const Symbol& b) noexcept {
    return &a.GetString() == &b.GetString();
}
[[nodiscard]] inline bool operator==(const Symbol& a, const char* b) noexcept {
    return b != nullptr && std::string_view(a.GetString()) == b;
}
[[nodiscard]] inline bool operator!=(const Symbol& a, const Symbol& b) noexcept {
    return !(a == b);
}
[[nodiscard]] inline bool operator!=(const Symbol& a, const char* b) noexcept {
    return !(a == b);
}

}  // namespace du
