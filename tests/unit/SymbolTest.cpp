// Interned names.
#include "host/du/Symbol.h"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>

namespace {

using du::Symbol;

static_assert(std::is_trivially_copyable_v<Symbol> && sizeof(Symbol) == sizeof(void*));
static_assert(!std::is_convertible_v<const char*, Symbol>, "interning is visible");

TEST(Symbols, EqualTextsShareOneStorageThatStays) {
    const std::string text = "a name that is too long for a short string";
    std::string changing = text;
    const Symbol first(changing.c_str());
    const std::string* address = &first.GetString();
    changing.assign(text.size(), 'x');
    EXPECT_EQ(first, text.c_str()) << "the text was copied";
    for (int i = 0; i < 1000; ++i) {
        EXPECT_NE(Symbol(("name " + std::to_string(i)).c_str()), first);
    }
    EXPECT_EQ(Symbol(text.c_str()), first);
    EXPECT_EQ(&Symbol(text.c_str()).GetString(), address);
}

TEST(Symbols, AreComparedByteForByteAndNoTextIsTheEmptyName) {
    const Symbol name("touch");
    EXPECT_TRUE(name == "touch");
    for (const char* other : {"Touch", "touch ", "touc", "touches", ""}) {
        EXPECT_FALSE(name == other) << other;
        EXPECT_FALSE(name == Symbol(other)) << other;
    }
    const char* nothing = nullptr;
    EXPECT_EQ(Symbol(), "");
    EXPECT_EQ(Symbol(), Symbol(""));
    EXPECT_EQ(Symbol(nothing), Symbol());
    EXPECT_FALSE(Symbol() == nothing);
}

}  // namespace
