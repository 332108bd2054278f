// Interned names.
#include "host/du/Symbol.h"
#include "host/workflow/ConstStrings.h"

#include <gtest/gtest.h>

#include <iterator>
#include <set>
#include <string>
#include <type_traits>

namespace {

using du::Symbol;
using workflow::ConstStrings;

static_assert(std::is_trivially_copyable_v<Symbol> && sizeof(Symbol) == sizeof(void*));
static_assert(!std::is_convertible_v<const char*, Symbol>, "interning is visible");

TEST(Symbols, EqualTextsShareOneStorage) {
    std::string text = "a name that is too long for a short string";
    const Symbol first(text.c_str());
    const Symbol second(std::string(text).c_str());
    EXPECT_EQ(first, second);
    EXPECT_EQ(&first.GetString(), &second.GetString());
    text.assign(text.size(), 'x');
    EXPECT_EQ(first, "a name that is too long for a short string") << "the text was copied";
}

TEST(Symbols, AreComparedByteForByte) {
    const Symbol name("touch");
    EXPECT_TRUE(name == "touch");
    for (const char* other : {"Touch", "touch ", "touc", "touches", ""}) {
        EXPECT_FALSE(name == other) << other;
        EXPECT_FALSE(name == Symbol(other)) << other;
    }
}

TEST(Symbols, NoTextIsTheEmptyName) {
    EXPECT_EQ(Symbol(), Symbol(""));
    EXPECT_EQ(Symbol(nullptr), Symbol());
    EXPECT_EQ(Symbol(), "");
    const char* nothing = nullptr;
    EXPECT_FALSE(Symbol() == nothing);
}

TEST(Symbols, StayWhereTheyAreWhenManyFollow) {
    const Symbol early("an early name");
    const std::string* address = &early.GetString();
    for (int i = 0; i < 1000; ++i) {
        const std::string text = "name " + std::to_string(i);
        EXPECT_EQ(Symbol(text.c_str()).GetString(), text);
    }
    EXPECT_EQ(&Symbol("an early name").GetString(), address);
}

TEST(Symbols, TheMessageTypesAreDistinctAndNamedLikeTheirConstants) {
    const std::pair<Symbol, const char*> types[] = {
        {ConstStrings::MsgTouch, "MsgTouch"},
        {ConstStrings::MsgTimer, "MsgTimer"},
        {ConstStrings::MsgSetMode, "MsgSetMode"},
        {ConstStrings::MsgUpdateStatusBar, "MsgUpdateStatusBar"},
        {ConstStrings::MsgMouseMove, "MsgMouseMove"},
        {ConstStrings::MsgMouseLeftDown, "MsgMouseLeftDown"},
        {ConstStrings::MsgMouseLeftUp, "MsgMouseLeftUp"},
        {ConstStrings::MsgMouseInitLeftDrag, "MsgMouseInitLeftDrag"},
        {ConstStrings::MsgMouseLeftDrag, "MsgMouseLeftDrag"},
        {ConstStrings::MsgMouseRightDown, "MsgMouseRightDown"},
        {ConstStrings::MsgMouseRightUp, "MsgMouseRightUp"},
        {ConstStrings::MsgMouseInitRightDrag, "MsgMouseInitRightDrag"},
        {ConstStrings::MsgMouseRightDrag, "MsgMouseRightDrag"},
        {ConstStrings::MsgMouseInitMiddleDrag, "MsgMouseInitMiddleDrag"},
        {ConstStrings::MsgMouseMiddleDrag, "MsgMouseMiddleDrag"},
        {ConstStrings::MsgClickLeft, "MsgClickLeft"},
        {ConstStrings::MsgDoubleClickLeft, "MsgDoubleClickLeft"},
    };
    std::set<const std::string*> storages;
    for (const auto& [type, text] : types) {
        EXPECT_EQ(type, text);
        storages.insert(&type.GetString());
    }
    EXPECT_EQ(storages.size(), std::size(types));
}

}  // namespace
