// SPDX-License-Identifier: MIT
#include "UtilityDLL/text/private/LineDivision.h"

#include "UtilityDLL/text/private/Character.h"
#include "tests/support/Random.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

using Lines = std::vector<std::wstring>;

// Every unit of a text is as wide as a column, but what stands on the character before it has no width.
double Columns(std::wstring_view text) {
    return static_cast<double>(std::count_if(text.begin(), text.end(), [](wchar_t c) {
        return c != 0x0301 && c != 0x200D && (static_cast<char32_t>(c) & ~0x3FFu) != 0xDC00;
    }));
}

// As a font with narrow and wide letters has it.
double Proportional(std::wstring_view text) {
    double width = 0;
    for (const wchar_t c : text) width += c == L'W' ? 3.25 : c == L'i' ? 0.5 : Columns({&c, 1});
    return width;
}

Lines Divided(std::wstring_view text, double width, const TextWidth& measure = Columns) {
    const auto pieces = DivideIntoLines(text, width, measure);
    return {pieces.begin(), pieces.end()};
}

// Where characters begin, for texts of the letters below alone.
constexpr wchar_t kLetters[] = L"aabbiW  \t\x00A0\x0301\x200D\xD83D\xDE00\r\n";
bool IsBoundary(const std::wstring& text, std::size_t at) {
    if (at == 0 || at >= text.size()) return true;
    const auto c = static_cast<char32_t>(text[at]), before = static_cast<char32_t>(text[at - 1]);
    return c != 0x0301 && c != 0x200D && before != 0x200D && !(before == 0xD83D && c == 0xDE00);
}
bool IsBlankAt(const std::wstring& text, std::size_t at) {
    return at < text.size() && (text[at] == L' ' || text[at] == L'\t') && IsBoundary(text, at) &&
           IsBoundary(text, at + 1);
}

// The rules, in the plainest way: every place is tried, from the last to the first.
Lines PlainlyWrapped(std::wstring text, double width, const TextWidth& measure) {
    Lines lines;
    while (!text.empty()) {
        std::size_t end = measure(text) <= width ? text.size() : 0;
        for (std::size_t i = text.size() - 1; end == 0 && i > 0; --i)
            if (IsBlankAt(text, i) && IsBoundary(text, i) && !IsBlankAt(text, i - 1) &&
                measure(text.substr(0, i)) <= width)
                end = i;
        if (end == 0 && !IsBlankAt(text, 0)) {
            std::size_t first = 1;
            while (!IsBoundary(text, first)) ++first;
            for (std::size_t i = first; i < text.size(); ++i)
                if (IsBoundary(text, i) && (i == first || measure(text.substr(0, i)) <= width)) end = i;
            if (end == 0) end = text.size();
        }
        if (end > 0) lines.push_back(text.substr(0, end));
        text.erase(0, end);
        while (IsBlankAt(text, 0)) text.erase(0, 1);
    }
    if (lines.empty()) lines.emplace_back();
    return lines;
}

Lines PlainlyDivided(const std::wstring& text, double width, const TextWidth& measure) {
    Lines lines;
    std::wstring paragraph;
    const auto wrap = [&] {
        const Lines more = width > 0 ? PlainlyWrapped(paragraph, width, measure) : Lines{paragraph};
        lines.insert(lines.end(), more.begin(), more.end());
        paragraph.clear();
    };
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == L'\r' && i + 1 < text.size() && text[i + 1] == L'\n') continue;
        if (text[i] == L'\n' || text[i] == L'\r')
            wrap();
        else
            paragraph += text[i];
    }
    wrap();
    return lines;
}

// What a division must keep to, whatever the text. The measure is of what was asked for.
void ExpectPromisesKept(const std::wstring& text, double width, const TextWidth& measure) {
    const std::wstring_view all = text;
    std::size_t at = 0;
    for (const std::wstring_view line : DivideIntoLines(text, width, measure)) {
        const auto begin = static_cast<std::size_t>(line.data() - all.data());
        ASSERT_GE(begin, at);
        for (; at < begin; ++at) // what is in no line is a blank or a line break
            ASSERT_TRUE(IsBlank(text[at]) || text[at] == L'\n' || text[at] == L'\r') << at;
        at += line.size();
        ASSERT_EQ(std::wstring_view::npos, line.find_first_of(L"\r\n"));
        if (width > 0 && !line.empty() && CharacterEnd(line, 0) != line.size()) {
            ASSERT_LE(measure(line), width);
        }
    }
    for (; at < text.size(); ++at) ASSERT_TRUE(IsBlank(text[at]) || text[at] == L'\n' || text[at] == L'\r');
}

struct Work {
    std::size_t lines = 0;
    std::size_t calls = 0;
    std::size_t characters = 0;
};
Work WorkFor(const std::wstring& text, double width) {
    Work work;
    work.lines = DivideIntoLines(text, width, [&](std::wstring_view piece) {
                     ++work.calls;
                     work.characters += piece.size();
                     return static_cast<double>(piece.size());
                 }).size();
    return work;
}

std::wstring Repeated(std::wstring_view text, std::size_t count) {
    std::wstring all;
    all.reserve(text.size() * count);
    for (std::size_t i = 0; i < count; ++i) all += text;
    return all;
}

} // namespace

TEST(LineDivision, RowByRow) {
    struct Row {
        const wchar_t* text;
        double width;
        Lines lines;
    };
    for (const Row& row : {
             Row{L"", 5, {L""}},
             Row{L"a", 5, {L"a"}},
             Row{L"ab cd ef", 5, {L"ab cd", L"ef"}}, // exactly full
             Row{L"ab cd ef", 4.9, {L"ab", L"cd", L"ef"}},
             Row{L"ab cd ef", 100, {L"ab cd ef"}},
             Row{L"ab   cd", 4, {L"ab", L"cd"}}, // all blanks at the break go
             Row{L"ab\tcd", 4, {L"ab", L"cd"}},
             Row{L"ab \t \x3000 cd", 4, {L"ab", L"cd"}},
             // a line break ends a line, whatever there is to it
             Row{L"a\nb", 5, {L"a", L"b"}},
             Row{L"a\r\nb", 5, {L"a", L"b"}},
             Row{L"a\rb", 5, {L"a", L"b"}},
             Row{L"a\n\nb", 5, {L"a", L"", L"b"}},
             Row{L"a\r\n\r\nb", 5, {L"a", L"", L"b"}},
             Row{L"a\n\rb", 5, {L"a", L"", L"b"}},
             Row{L"a\r\r\nb", 5, {L"a", L"", L"b"}},
             Row{L"a\n", 5, {L"a", L""}},
             Row{L"\n", 5, {L"", L""}},
             Row{L"\na", 5, {L"", L"a"}},
             Row{L"ab cd\nef", 4, {L"ab", L"cd", L"ef"}},
             // without a width, breaks alone divide
             Row{L" ab  cd \nef ", 0, {L" ab  cd ", L"ef "}},
             Row{L"ab cd", -3, {L"ab cd"}},
             Row{L"ab cd", kNaN, {L"ab cd"}},
             Row{L"ab cd", kInfinity, {L"ab cd"}},
             Row{L"", 0, {L""}},
             // blanks that are at no break are the text's
             Row{L"  ab cd", 5, {L"  ab", L"cd"}},
             Row{L"ab  \ncd", 5, {L"ab  ", L"cd"}},
             Row{L"ab  ", 5, {L"ab  "}},
             Row{L"ab  ", 3, {L"ab"}}, // they do not fit
             Row{L"   ", 5, {L"   "}},
             Row{L"   ", 2, {L""}},
             Row{L" ", 0.5, {L""}},
             Row{L"a\n    \nb", 2, {L"a", L"", L"b"}},
             Row{L"  abcd", 5, {L"abcd"}}, // no empty line for the indent
             Row{L"   abc", 2, {L"ab", L"c"}},
             // words that are too long
             Row{L"abcdefgh", 3, {L"abc", L"def", L"gh"}},
             Row{L"ab cdefgh ij", 3, {L"ab", L"cde", L"fgh", L"ij"}},
             Row{L"abc def", 3, {L"abc", L"def"}},
             Row{L"abcd ef", 3, {L"abc", L"d", L"ef"}},
             Row{L"abc  ", 1, {L"a", L"b", L"c"}},
             Row{L"abc", 0.5, {L"a", L"b", L"c"}}, // one character at least
             Row{L"abc", 5e-324, {L"a", L"b", L"c"}},
             // no blank to break at
             Row{L"ab\x00A0"
                 L"cd ef",
                 6,
                 {L"ab\x00A0"
                  L"cd",
                  L"ef"}},
             Row{L"12\x202F"
                 L"345 m",
                 6,
                 {L"12\x202F"
                  L"345",
                  L"m"}},
             Row{L"12\x2007"
                 L"345 m",
                 6,
                 {L"12\x2007"
                  L"345",
                  L"m"}},
             // others than space and tab
             Row{L"ab\x2009"
                 L"cd",
                 3,
                 {L"ab", L"cd"}},
             Row{L"\x6D4B\x6DF1\x3000\x6D77\x56FE", 3, {L"\x6D4B\x6DF1", L"\x6D77\x56FE"}},
             Row{L"\x6D4B\x6DF1\x6D77\x56FE", 3, {L"\x6D4B\x6DF1\x6D77", L"\x56FE"}},
         }) {
        SCOPED_TRACE(::testing::PrintToString(std::wstring(row.text)));
        EXPECT_EQ(row.lines, Divided(row.text, row.width));
    }
}

TEST(LineDivision, BreaksNoCharacterOfSeveralUnits) {
    // A line for each, since nothing fits.
    for (const Lines& characters : std::initializer_list<Lines>{
             {L"a\x0301", L"b"},
             {L"a\x0301\x0327\x0323", L"b"},
             {L"\xD83D\xDE00", L"a"},                                    // a surrogate pair
             {L"\xDE00", L"\xD83D", L"a"},                               // the wrong way round
             {L"a", L"\xD83D"},                                          // half of one at the end
             {L"\xD83D\xDC4D\xD83C\xDFFD", L"a"},                        // a skin tone
             {L"\xD83D\xDC68\x200D\xD83D\xDC69", L"a"},                  // joined
             {L"\x2764\xFE0F", L"a"},                                    // a variation selector
             {L"\xD83C\xDDE9\xD83C\xDDEA", L"\xD83C\xDDF8\xD83C\xDDEA"}, // two flags
             {L"\xD83C\xDDE9\xD83C\xDDEA", L"\xD83C\xDDF8"},             // one and a half
             {L"\x1112\x1161\x11AB", L"\x1100\x1173\x11AF"},             // Hangul, letter by letter
             {L"\xD55C", L"\xAE00"},                                     // the same by syllables
             {L"\xAC00\x11A8", L"\x1100\x1100\xAC00"},
             {L"\x0E01\x0E38", L"\x0E07"},             // Thai
             {L"\x0915\x094D\x200D\x0937", L"\x0915"}, // Devanagari
         }) {
        std::wstring text;
        for (const std::wstring& character : characters) text += character;
        EXPECT_EQ(characters, Divided(text, 0.5)) << ::testing::PrintToString(text);
        EXPECT_EQ(Lines{text}, Divided(text, 100));
    }
}

TEST(LineDivision, BreaksAtNoBlankThatCarriesAMark) {
    EXPECT_EQ((Lines{L"ab", L" \x0301"
                            L"c"}),
              Divided(L"ab \x0301"
                      L"c",
                      2));
    EXPECT_EQ((Lines{L"a", L"b \x0301"}), Divided(L"a b \x0301", 3));
}

TEST(LineDivision, IsTheBruteForceOne) {
    Random random(41);
    for (int run = 0; run < kPropertyRuns; ++run) {
        const std::wstring text = random.Text(kLetters, 40);
        const double width = random.OneOf<double>({0.0, 0.25, 1, 2, 3, 5, 7.5, 12, 30});
        for (const TextWidth& measure : {TextWidth(Columns), TextWidth(Proportional)})
            ASSERT_EQ(PlainlyDivided(text, width, measure), Divided(text, width, measure))
                << ::testing::PrintToString(text) << " in " << width;
        ExpectPromisesKept(text, width, Proportional);
        if (HasFatalFailure()) FAIL() << ::testing::PrintToString(text) << " in " << width;
    }
}

TEST(LineDivision, KeepsItsPromisesForHostileTexts) {
    Random random(42);
    for (int run = 0; run < 2000; ++run) {
        std::wstring text(random.Below(300), L' ');
        for (wchar_t& c : text) c = static_cast<wchar_t>(random.OnceIn(4) ? L' ' : random.Below(0x10000));
        ExpectPromisesKept(text, random.Real(0, 60), Proportional);
        if (HasFatalFailure()) FAIL() << ::testing::PrintToString(text);
    }
    for (const wchar_t unit : {L'\0', L' ', L'\n', L'\r', L'\x0301', L'\x200D', L'\xD83D', L'\xDE00'})
        ExpectPromisesKept(std::wstring().append(1000, unit), 3, Columns);
}

TEST(LineDivision, FitsEvenWhereMoreTextIsNarrower) {
    Random random(44);
    const auto shrinking = [](std::wstring_view text) { return static_cast<double>(text.size() * 5 % 7); };
    for (int run = 0; run < 10'000; ++run) {
        const std::wstring text = random.Text(kLetters, 40);
        ExpectPromisesKept(text, random.Real(0.1, 6), shrinking);
        if (HasFatalFailure()) FAIL() << ::testing::PrintToString(text);
    }
}

TEST(LineDivision, StaysWithinBoundsForMeasuresThatMakeNoSense) {
    const std::wstring text = L"ab cd  efgh \n\n i\x0301jk";
    Random random(43);
    for (const TextWidth& measure :
         {TextWidth([](std::wstring_view) { return kNaN; }),
          TextWidth([](std::wstring_view) { return -kInfinity; }),
          TextWidth([](std::wstring_view) { return kInfinity; }),
          TextWidth([](std::wstring_view t) { return -static_cast<double>(t.size()); }),
          TextWidth([&](std::wstring_view) { return random.Real(0, 10); })}) {
        for (int run = 0; run < 100; ++run) {
            std::size_t units = 0;
            for (const std::wstring& line : Divided(text, 4, measure)) units += line.size();
            EXPECT_GE(text.size() - 2, units);
            EXPECT_LE(text.size() - 8, units);
        }
    }
}

TEST(LineDivision, MeasuresInProportionToTheText) {
    struct Row {
        const char* what;
        std::function<std::wstring(std::size_t)> text;
        double width;
    };
    const auto of = [](const wchar_t* unit) {
        return [unit](std::size_t size) { return Repeated(unit, size / std::wstring(unit).size()); };
    };
    for (const Row& row : {
             Row{"one word", of(L"a"), 40},
             Row{"one word in narrow lines", of(L"a"), 0.5},
             Row{"one word in one line", of(L"a"), 1e9},
             Row{"words", of(L"sounding "), 40},
             Row{"words in long lines", of(L"sounding "), 4000},
             Row{"words in one line", of(L"sounding "), 1e9},
             Row{"words that fill a line", of(L"soundings "), 9},
             Row{"a letter and a word that just fits", of(L"a sounding "), 8},
             Row{"blanks", of(L" "), 40},
             Row{"blanks in one line", of(L" "), 1e9},
             Row{"a letter, then blanks", [](std::size_t n) { return L"a" + Repeated(L" ", n); }, 40},
             Row{"blanks, then a word", [](std::size_t n) { return Repeated(L" ", n) + L"sounding"; }, 40},
             Row{"line breaks", of(L"\n"), 40},
             Row{"one character with marks", of(L"\x0301"), 40},
             Row{"characters with marks", of(L"a\x0301\x0301\x0301\x0301\x0301\x0301\x0301"), 40},
             Row{"a word, then marks", [](std::size_t n) { return L"soundings " + Repeated(L"\x0301", n); },
                 4},
             Row{"lone surrogates", of(L"\xD83D"), 40},
         }) {
        SCOPED_TRACE(row.what);
        const std::size_t size = 100'000;
        const Work small = WorkFor(row.text(size), row.width);
        const Work large = WorkFor(row.text(10 * size), row.width);
        EXPECT_LE(large.calls, 11 * small.calls + 20);
        EXPECT_LE(large.characters, 11 * small.characters + 20);
        const double k = std::min(row.width, 1e6); // characters a line
        EXPECT_LE(static_cast<double>(large.characters), 4e6 * (1 + std::log2(1 + k)));
    }
}
