// SPDX-License-Identifier: MIT
// The texts as the system has them from the library's resources.

#include "UtilityDLL/res/private/StringTable.h"

#include <gtest/gtest.h>
#include <map>
#include <string>

#include <windows.h>

namespace {

std::wstring SystemText(unsigned int number) {
    const wchar_t* text = nullptr; // not terminated
    const int length =
        LoadStringW(GetModuleHandleW(L"UtilityDLL.dll"), number, reinterpret_cast<wchar_t*>(&text), 0);
    return length > 0 ? std::wstring(text, static_cast<std::size_t>(length)) : std::wstring();
}

TEST(StringTable_Resource, EveryTextIsTheSystemsToo) {
    for (const BuiltInText& text : BuiltInTexts()) {
        const std::wstring found = SystemText(static_cast<unsigned int>(text.id));
        EXPECT_EQ(text.text, found) << static_cast<std::uint32_t>(text.id);
        EXPECT_EQ(LoadText(text.id), found) << static_cast<std::uint32_t>(text.id);
    }
}

TEST(StringTable_Resource, ThereIsNoOther) {
    std::map<unsigned int, std::wstring> own;
    for (const BuiltInText& text : BuiltInTexts()) own[static_cast<unsigned int>(text.id)] = text.text;
    std::map<unsigned int, std::wstring> systems;
    for (unsigned int number = 0; number < 0x10000; ++number)
        if (const std::wstring text = SystemText(number); !text.empty()) systems[number] = text;
    EXPECT_EQ(own, systems);
}

TEST(StringTable_Resource, QuotesTabsAndLineBreaksAreInIt) {
    EXPECT_EQ(L"Error opening \"", SystemText(9070));
    EXPECT_EQ(L"Failed to implement modifications.\nReason:\n\tThe depth was modfied to a value\n\tthat is "
              L"already in "
              L"the list!",
              SystemText(9065));
}

} // namespace
