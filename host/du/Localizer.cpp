// A text is the provider's own. The answer to a missing one is interned, because the caller gets a reference that has
// to stay valid.
#include "host/du/Localizer.h"

#include "host/du/Symbol.h"

namespace du {
namespace {

const StringTableProvider* s_provider = nullptr;

}  // namespace

StringTableProvider::~StringTableProvider() = default;

const std::string& Localizer::LocalizeMessage(const char* key, ActionOnFailure action) const {
    const std::string* text = s_provider == nullptr ? nullptr : s_provider->FindText(m_table, key);
    if (text != nullptr) {
        return *text;
    }
    return Symbol(action == ReturnKey ? key : nullptr).GetString();
}

void Localizer::SetProvider(const StringTableProvider* provider) noexcept {
    s_provider = provider;
}

}  // namespace du
