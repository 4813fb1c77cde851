// SPDX-License-Identifier: MIT
#include "UtilityDLL/keywords/Placeholders.h"

#include "tests/support/Random.h"

#include <gmock/gmock.h>
#include <string>
#include <vector>

namespace {

using Names = std::vector<std::wstring>;

Names NamesIn(const std::wstring& text) {
    Names names;
    for (Placeholders walk(text); walk.Next();) names.emplace_back(walk.Name());
    return names;
}

// The rule character by character, with a flag, a start and a buffer.
Names NamesByStateMachine(const std::wstring& text) {
    Names names;
    bool inside = false;
    std::size_t start = 0;
    std::wstring buffer;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const wchar_t c = text[i];
        if (!inside) {
            if (c != L'%') continue;
            inside = true;
            start = i;
        } else if (c == L'\n' || c == L'\r' || c == L'\0') {
            inside = false;
        } else if (c == L'%') {
            if (i > start + 1) {
                names.push_back(buffer);
                buffer.clear();
            }
            inside = false;
        } else {
            buffer += c;
        }
    }
    return names;
}

TEST(Placeholders, NamesOfAText) {
    struct Row {
        std::wstring text;
        Names names;
    };
    using namespace std::string_literals;
    const Row rows[] = {
        {L"", {}},
        {L"%", {}},
        {L"%%", {}},
        {L"%%%", {}},   // the second sign ends what the first began; the third begins anew
        {L"%%%%%", {}}, // two pairs and an unfinished one
        {L"%a%", {L"a"}},
        {L"% %", {L" "}},
        {L"%a%%b%", {L"a", L"b"}},
        {L"%a%b%", {L"a"}},
        {L"%%a%", {}}, // the pair takes the sign that the name would need
        {L"100%%", {}},
        {L"50% and 60%", {L" and 60"}},
        {L"%ab\n%cd%", {L"abcd"}},
        {L"%ab\r\n%cd%", {L"abcd"}},
        {L"%ab\0%cd%"s, {L"abcd"}},
        {L"%ab\nxy %cd% %ef%", {L"abcd", L"ef"}}, // what stands outside is not collected
        {L"%a\n%b\n%c%%d%", {L"abc", L"d"}},      // over two line breaks; taking a name empties the buffer
        {L"%ab\n%%%cd%", {L"abcd"}},              // an empty pair neither takes nor drops what was collected
        {L"%ab\n\n\n%c%", {L"abc"}},
        {L"%\n%c%", {L"c"}},
        {L"%ab\n", {}},
        {L"%\x4E2D\U0001F6A2%", {L"\x4E2D\U0001F6A2"}},
        {L"%a\tb%", {L"a\tb"}}, // a tab is a character like any other
        {std::wstring(1000001, L'%'), {}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(::testing::PrintToString(row.text.substr(0, 100)));
        EXPECT_EQ(row.names, NamesIn(row.text));
        EXPECT_EQ(row.names, NamesByStateMachine(row.text));
    }
}

TEST(Placeholders, AgreeWithTheStateMachineOnRandomTexts) {
    Random random(6);
    const std::wstring alphabet(L"%%%ab\n\r\0 ", 9);
    std::wstring text;
    for (int i = 0; i < 200000; ++i) {
        text.resize(random() % 24);
        for (wchar_t& c : text) c = alphabet[random() % alphabet.size()];
        ASSERT_EQ(NamesByStateMachine(text), NamesIn(text)) << ::testing::PrintToString(text);
    }
}

TEST(Placeholders, PositionsSpanThePercentSigns) {
    const std::wstring text = L"A %b% %% %c\n d%e f%";
    Placeholders walk(text);
    ASSERT_TRUE(walk.Next());
    EXPECT_EQ(L"%b%", text.substr(walk.Begin(), walk.End() - walk.Begin()));
    EXPECT_FALSE(walk.IsWrapped());
    ASSERT_TRUE(walk.Next());
    EXPECT_EQ(L"ce f", walk.Name());
    EXPECT_EQ(L"%e f%", text.substr(walk.Begin(), walk.End() - walk.Begin()));
    EXPECT_TRUE(walk.IsWrapped());
    EXPECT_FALSE(walk.Next());
    EXPECT_FALSE(walk.Next());
    EXPECT_EQ(text.size(), walk.End());
}

TEST(Placeholders, AWrappedNameDoesNotMarkTheNextOne) {
    const std::wstring text = L"%a\n%b% %c%";
    Placeholders walk(text);
    ASSERT_TRUE(walk.Next());
    EXPECT_TRUE(walk.IsWrapped());
    ASSERT_TRUE(walk.Next());
    EXPECT_EQ(L"c", walk.Name());
    EXPECT_FALSE(walk.IsWrapped());
}

} // namespace
