// SPDX-License-Identifier: MIT
#include "UtilityDLL/text/private/Character.h"

#include "tests/support/Random.h"

#include <cstddef>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

// As text: one unit, or a surrogate pair, whatever the width of wchar_t.
std::wstring Of(char32_t code) {
    if (code < 0x10000) return {static_cast<wchar_t>(code)};
    code -= 0x10000;
    return {static_cast<wchar_t>(0xD800 + (code >> 10)), static_cast<wchar_t>(0xDC00 + (code & 0x3FF))};
}

std::wstring Of(const std::vector<char32_t>& codes) {
    std::wstring text;
    for (const char32_t code : codes) text += Of(code);
    return text;
}

} // namespace

TEST(CharacterEnd, KeepsTogetherWhatReadersSeeAsOne) {
    struct Row {
        const char* name;
        std::vector<char32_t> codes;
        std::size_t inFirst; // of these, in the first character
    };
    for (const Row& row : {
             Row{"letters", {'a', 'b'}, 1},
             Row{"blank and letter", {' ', 'a'}, 1},
             Row{"line end", {'\r', '\n'}, 1},
             Row{"mark", {'e', 0x0301, 'x'}, 2},
             Row{"marks", {'e', 0x0301, 0x0323, 'x'}, 3},
             Row{"mark alone", {0x0301, 'x'}, 1},
             Row{"first and last of the marks", {'e', 0x0300, 0xE01EF, 'x'}, 3},
             Row{"before the first mark", {'e', 0x02FF}, 1},
             Row{"behind the last mark", {'e', 0xE01F0}, 1},
             Row{"between two ranges", {0x05D0, 0x05BE}, 1}, // maqaf, which is a hyphen
             Row{"vowel sign", {0x0915, 0x093F, 0x0915}, 2},
             Row{"non-joiner", {0x0915, 0x200C, 0x0915}, 2},
             Row{"variation", {0x2764, 0xFE0F, 'x'}, 2},
             Row{"skin tone", {0x1F44D, 0x1F3FD, 'x'}, 2},
             Row{"family", {0x1F468, 0x200D, 0x1F469, 0x200D, 0x1F466, 'x'}, 5},
             Row{"joiner at the end", {'a', 0x200D}, 2},
             Row{"flag", {0x1F1E9, 0x1F1EA, 0x1F1EB, 0x1F1F7}, 2},
             Row{"half a flag", {0x1F1E9, 'x'}, 1},
             Row{"flag with a mark between", {0x1F1E9, 0x0301, 0x1F1EA}, 2},
             Row{"flag of tags", {0x1F3F4, 0xE0067, 0xE0062, 0xE007F, 'x'}, 4},
             Row{"Hangul letters", {0x1112, 0x1161, 0x11AB, 0x1100}, 3},
             Row{"two leading consonants", {0x1100, 0x1100, 0x1161, 'x'}, 3},
             Row{"open syllable and consonant", {0xAC00, 0x11A8, 0xAC00}, 2},
             Row{"closed syllable and consonant", {0xAC01, 0x11A8, 'x'}, 2},
             Row{"closed syllable and vowel", {0xAC01, 0x1161}, 1},
             Row{"trailing and vowel", {0x11A8, 0x1161}, 1},
             Row{"vowel and leading", {0x1161, 0x1100}, 1},
             Row{"syllables", {0xD55C, 0xAE00}, 1},
             Row{"consonant and letter", {0x1100, 'x'}, 1},
             Row{"ideographs", {0x6D4B, 0x6DF1}, 1},
         }) {
        const std::size_t expected =
            Of(std::vector(row.codes.begin(), row.codes.begin() + std::ptrdiff_t(row.inFirst))).size();
        EXPECT_EQ(expected, CharacterEnd(Of(row.codes), 0)) << row.name;
        EXPECT_EQ(expected + 1, CharacterEnd(L'x' + Of(row.codes), 1)) << row.name << ", not at the start";
    }
}

TEST(CharacterEnd, TakesALoneSurrogateForACharacter) {
    EXPECT_EQ(1u, CharacterEnd(L"\xD83D", 0));
    EXPECT_EQ(1u, CharacterEnd(L"\xD83Dx", 0));
    EXPECT_EQ(1u, CharacterEnd(L"\xD83D\xD83D\xDE00", 0));
    EXPECT_EQ(3u, CharacterEnd(L"\xD83D\xD83D\xDE00", 1));
    EXPECT_EQ(1u, CharacterEnd(L"\xDE00\xD83D", 0));
    EXPECT_EQ(2u, CharacterEnd(L"\xD83D\x0301x", 0)); // which has marks, too
}

TEST(CharacterEnd, GoesOnAndStaysInTheText) {
    Random random(70);
    for (int run = 0; run < kPropertyRuns; ++run) {
        const std::wstring text =
            random.Text(L"a \x0301\x200D\xD83D\xDE00\xD83C\xDDE9\x1100\x1161\x11A8\xAC00", 30);
        for (std::size_t i = 0; i < text.size(); ++i) {
            const std::size_t end = CharacterEnd(text, i);
            ASSERT_GT(end, i);
            ASSERT_LE(end, text.size());
        }
    }
}

TEST(IsBlank, IsSoForSpacesThatALineMayBeBrokenAt) {
    const std::wstring blanks =
        L"\t \x1680\x2000\x2001\x2002\x2003\x2004\x2005\x2006\x2008\x2009\x200A\x205F\x3000";
    for (unsigned code = 0; code < 0x10000; ++code) {
        const auto character = static_cast<wchar_t>(code);
        ASSERT_EQ(code != 0 && blanks.find(character) != std::wstring::npos, IsBlank(character)) << code;
    }
}
