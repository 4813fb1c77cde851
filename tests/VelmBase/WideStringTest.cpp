// SPDX-License-Identifier: MIT
#include "VelmBase/WideString.h"

#include "VelmBase/Utf16.h"
#include "tests/support/Random.h"

#include <gtest/gtest.h>
#include <limits>

TEST(WideString, CapitalsAreThoseOfAsciiAndLatin1) {
    for (int code = 0; code < 0x3000; ++code) {
        const auto c = static_cast<wchar_t>(code);
        const bool small = (code >= 'a' && code <= 'z') || (code >= 0xE0 && code <= 0xFE && code != 0xF7);
        const bool capital = (code >= 'A' && code <= 'Z') || (code >= 0xC0 && code <= 0xDE && code != 0xD7);
        ASSERT_EQ(small ? code - 32 : code, static_cast<int>(ToUpperW(c)));
        ASSERT_EQ(capital ? code + 32 : code, static_cast<int>(ToLowerW(c)));
    }
    EXPECT_EQ(static_cast<wchar_t>(0xFF), ToUpperW(static_cast<wchar_t>(0xFF)));
    EXPECT_EQ(static_cast<wchar_t>(0xB5), ToUpperW(static_cast<wchar_t>(0xB5)));
    EXPECT_EQ(static_cast<wchar_t>(0xDF), ToUpperW(static_cast<wchar_t>(0xDF)));
    EXPECT_EQ(L'I', ToUpperW(L'i'));
    EXPECT_EQ(static_cast<wchar_t>(0x131), ToUpperW(static_cast<wchar_t>(0x131)));
}

TEST(WideString, ComparisonsIgnoreCase) {
    EXPECT_TRUE(icompareW(L"", L""));
    EXPECT_TRUE(icompareW(L"Gr\u00FCn", L"GR\u00DCN"));
    EXPECT_FALSE(icompareW(L"a", L"ab"));
    EXPECT_FALSE(icompareW(L"ab", L"a"));
    EXPECT_FALSE(icompareW(L"a", L"b"));
    EXPECT_FALSE(icompareW(L"\u03C9", L"\u03A9"));
    EXPECT_FALSE(icompareW(std::wstring(L"a\0b", 3), std::wstring(L"a\0c", 3)));
    EXPECT_TRUE(SmallerW(L"a", L"B"));
    EXPECT_TRUE(SmallerW(L"A", L"b"));
    EXPECT_TRUE(SmallerW(L"a", L"ab"));
    EXPECT_FALSE(SmallerW(L"a", L"A"));
    EXPECT_FALSE(GreaterW(L"a", L"A"));
    EXPECT_TRUE(SmallerW(L"_", L"Z")); // by the small letters: "_" lies between "Z" and "z"
    EXPECT_TRUE(GreaterW(L"\u00E4", L"z"));
    EXPECT_EQ(0, CompareNoCaseW(L"Ab\u00C4", L"aB\u00E4"));
    EXPECT_LT(CompareNoCaseW(L"", L"a"), 0);
    EXPECT_GT(CompareNoCaseW(L"a", L""), 0);
}

TEST(WideString, RandomComparisonsAreThoseOfTheSmallLetters) {
    Random random(80);
    for (int i = 0; i < 100000; ++i) {
        const std::wstring a = random.Text(L"aAzZ_@[\u00C4\u00E4\u00FF\u00D7\u00F7\u03A9", 5);
        const std::wstring b = random.Text(L"aAzZ_@[\u00C4\u00E4\u00FF\u00D7\u00F7\u03A9", 5);
        const auto small = [](std::wstring text) {
            for (wchar_t& c : text) c = ToLowerW(c);
            return text;
        };
        ASSERT_EQ(small(a) == small(b), icompareW(a, b));
        ASSERT_EQ(small(a) < small(b), SmallerW(a, b)) << ToUtf8(a) << ' ' << ToUtf8(b);
        ASSERT_EQ(small(a) > small(b), GreaterW(a, b));
    }
}

TEST(WideString, TrimsBothEnds) {
    EXPECT_EQ(L"", trimW(L""));
    EXPECT_EQ(L"", trimW(L" \t\r\n "));
    EXPECT_EQ(L"a b", trimW(L"\t a b\r\n"));
    EXPECT_EQ(L"\v\fa\u00A0", trimW(L" \v\fa\u00A0 "));
    EXPECT_EQ(L" a ", trimW(L"x a y", L"xy"));
    EXPECT_EQ(L" a ", trimW(L" a ", L""));
    EXPECT_EQ(std::wstring(L"\0a", 2), trimW(std::wstring(L" \0a ", 4)));
}

TEST(WideString, LeadingIntegers) {
    struct Row {
        std::wstring text;
        int value;
    };
    for (const Row& row :
         std::initializer_list<Row>{{L"", 0},
                                    {L" ", 0},
                                    {L"x", 0},
                                    {L"-", 0},
                                    {L"+", 0},
                                    {L"+-1", 0},
                                    {L"- 1", 0},
                                    {L"12", 12},
                                    {L" \t\n\v\f\r-12x", -12},
                                    {L"+7", 7},
                                    {L"1.9", 1},
                                    {L"0x10", 0},
                                    {L"007", 7},
                                    {L"2147483647", 2147483647},
                                    {L"2147483648", 2147483647},
                                    {L"-2147483648", std::numeric_limits<int>::min()},
                                    {L"-2147483649", std::numeric_limits<int>::min()},
                                    {L"99999999999999999999999999", 2147483647},
                                    {L"-99999999999999999999999999", std::numeric_limits<int>::min()},
                                    {L"\u0661", 0},
                                    {std::wstring(L"1\0002", 3), 1}})
        EXPECT_EQ(row.value, atoi(row.text)) << ToUtf8(row.text);
}

TEST(WideString, LeadingNumbers) {
    struct Row {
        std::wstring text;
        double value;
    };
    for (const Row& row : std::initializer_list<Row>{{L"", 0},
                                                     {L" ", 0},
                                                     {L"x", 0},
                                                     {L".", 0},
                                                     {L"-", 0},
                                                     {L"1.5", 1.5},
                                                     {L" \t-1.5e2x", -150},
                                                     {L"1,5", 1},
                                                     {L".5", .5},
                                                     {L"5.", 5},
                                                     {L"1e", 1},
                                                     {L"1e+", 1},
                                                     {L"1e-", 1},
                                                     {L"1e5e5", 1e5},
                                                     {L"1.2.3", 1.2},
                                                     {L"0x10", 0},
                                                     {L"inf", 0},
                                                     {L"nan", 0},
                                                     {L"-inf", 0},
                                                     {L"1e999", std::numeric_limits<double>::infinity()},
                                                     {L"-1e999", -std::numeric_limits<double>::infinity()},
                                                     {L"1e-999", 0},
                                                     {L"+3", 3},
                                                     {L"+-3", 0},
                                                     {L"1d5", 1},
                                                     {L"\u0661", 0}})
        EXPECT_EQ(row.value, atof(row.text)) << ToUtf8(row.text);
}

namespace {

std::wstring FromCodes(std::initializer_list<unsigned> codes) {
    std::wstring text;
    for (const unsigned code : codes) text += static_cast<wchar_t>(code);
    return text;
}

} // namespace

TEST(WideString, Utf8KnownTexts) {
    EXPECT_EQ("", ToUtf8(L""));
    EXPECT_EQ("a\xC3\xBC\xCE\xA9\xE6\xB5\xB7\xF0\x9F\x9A\xA2", ToUtf8(L"a\u00FC\u03A9\u6D77\U0001F6A2"));
    EXPECT_EQ(L"a\u00FC\u03A9\u6D77\U0001F6A2", FromUtf8("a\xC3\xBC\xCE\xA9\xE6\xB5\xB7\xF0\x9F\x9A\xA2"));
    EXPECT_EQ(std::string("\0", 1), ToUtf8(std::wstring(1, L'\0')));
    EXPECT_EQ(std::wstring(1, L'\0'), FromUtf8(std::string_view("\0", 1)));
    EXPECT_EQ("\xF4\x8F\xBF\xBF", ToUtf8(L"\U0010FFFF"));
    EXPECT_EQ(L"\uFFFF\uD7FF\uE000", FromUtf8("\xEF\xBF\xBF\xED\x9F\xBF\xEE\x80\x80"));
}

TEST(WideString, BytesThatAreNoUtf8AreKeptApart) {
    EXPECT_EQ(FromCodes({0xDC80}), FromUtf8("\x80"));
    EXPECT_EQ(FromCodes({'a', 0xDCFF, 'b'}), FromUtf8("a\xFF"
                                                      "b"));
    EXPECT_EQ(FromCodes({0xDCC3}), FromUtf8("\xC3"));             // cut off
    EXPECT_EQ(FromCodes({0xDCC0, 0xDC80}), FromUtf8("\xC0\x80")); // longer than it needs to be
    EXPECT_EQ(FromCodes({0xDCE0, 0xDC9F, 0xDCBF}), FromUtf8("\xE0\x9F\xBF"));
    EXPECT_EQ(FromCodes({0xDCF4, 0xDC90, 0xDC80, 0xDC80}), FromUtf8("\xF4\x90\x80\x80")); // above U+10FFFF
    EXPECT_EQ(FromCodes({0xDCED, 0xDCB2, 0xDC80}), FromUtf8("\xED\xB2\x80"));             // a surrogate
}

TEST(WideString, EveryByteSequenceComesBack) {
    Random random(81);
    for (int a = 0; a < 256; ++a)
        for (int b = 0; b < 256; ++b) {
            const std::string bytes = {static_cast<char>(a), static_cast<char>(b)};
            ASSERT_EQ(bytes, ToUtf8(FromUtf8(bytes)));
        }
    for (int i = 0; i < 200000; ++i) {
        std::string bytes(random.Below(12), '\0');
        for (char& byte : bytes)
            byte = random.OnceIn(2) ? static_cast<char>(random.Below(256))
                                    : "a\x80\xBF\xC3\xE0\xED\xA0\xB2\xF0\xF4\x90\x8F"[random.Below(12)];
        ASSERT_EQ(bytes, ToUtf8(FromUtf8(bytes))) << ::testing::PrintToString(bytes);
    }
}

TEST(WideString, EveryCharacterComesBack) {
    for (unsigned code = 0; code < 0x110000; ++code) {
        if (code >= 0xD800 && code < 0xE000) continue;
        std::wstring text;
        if (code > 0xFFFF && sizeof(wchar_t) == 2)
            text = FromCodes({0xD800 + ((code - 0x10000) >> 10), 0xDC00 + ((code - 0x10000) & 0x3FF)});
        else
            text = FromCodes({code});
        const std::string bytes = ToUtf8(text);
        ASSERT_EQ(code < 0x80 ? 1u : code < 0x800 ? 2u : code < 0x10000 ? 3u : 4u, bytes.size()) << code;
        ASSERT_EQ(text, FromUtf8(bytes)) << code;
    }
}

TEST(WideString, AnyWideTextBecomesUtf8WithoutHarm) {
    Random random(82);
    for (int i = 0; i < 100000; ++i) { // unpaired surrogates, and on Linux numbers that are no characters
        std::wstring text(random.Below(8), L'\0');
        for (wchar_t& c : text)
            c = static_cast<wchar_t>(random.OnceIn(2) ? 0xD7F0 + random.Below(0x820)
                                                      : static_cast<unsigned>(random.Bits()));
        const std::string bytes = ToUtf8(text);
        ASSERT_LE(bytes.size(), text.size() * 4);
    }
}

TEST(Utf16, UnitsAndLengths) {
    std::u16string units;
    ForEachUtf16Unit(L"a\u03A9\U0001F6A2", [&](char16_t unit) { units += unit; });
    EXPECT_EQ(u"a\u03A9\U0001F6A2", units);
    EXPECT_EQ(4u, Utf16Length(L"a\u03A9\U0001F6A2"));
    EXPECT_EQ(0u, Utf16Length(L""));
}

TEST(WideString, NarrowAsciiIsItself) {
    EXPECT_EQ(L"plain ASCII", FromNarrow("plain ASCII"));
    EXPECT_EQ(L"", FromNarrow(""));
}
