// Localised texts. The host provides the string tables.
#pragma once

#include "host/HostApi.h"

#include <string>

namespace du {

// Where a host keeps its string tables.
class HOST_API StringTableProvider {
public:
    virtual ~StringTableProvider();

    // The text of a key in a table, or null when the table or the key is missing. The text stays valid and unchanged
    // until the provider is replaced or changes the table.
    virtual const std::string* FindText(const char* table, const char* key) const = 0;
};

// Reads texts from one string table.
class HOST_API Localizer {
public:
    // What to answer for a key that is missing.
    enum ActionOnFailure {
        ReturnKey = 0,    // the key itself
        ReturnEmpty = 1,  // an empty text
    };

    // The name of the table is not copied and must outlive the localizer.
    explicit Localizer(const char* table) noexcept : m_table(table) {}

    // The text of a key. The reference is to the provider's own text and valid as long as that is; the answer to a
    // missing key lives until the process ends.
    [[nodiscard]] const std::string& LocalizeMessage(const char* key, ActionOnFailure action) const;

    // Sets the provider for the process; null takes it away. Not owned: it must outlive its use.
    static void SetProvider(const StringTableProvider* provider) noexcept;

private:
    const char* m_table;
};

}  // namespace du
