// The one table of names. It is in the host library, which host and plug-ins share, so that the same name has the same
// address in all of them.
#include "host/du/Symbol.h"

#include <set>

namespace du {
namespace {

// Built at first use and never destroyed, so that Symbols of every translation unit and plug-in stay valid to the end.
const std::string& Intern(const char* text) {
    static auto& names = *new std::set<std::string, std::less<>>;
    const std::string_view wanted = text == nullptr ? std::string_view{} : std::string_view(text);
    const auto found = names.find(wanted);
    return found != names.end() ? *found : *names.emplace(wanted).first;
}

}  // namespace

Symbol::Symbol() noexcept : m_text(&Intern(nullptr)) {}

Symbol::Symbol(const char* text) : m_text(&Intern(text)) {}

}  // namespace du
