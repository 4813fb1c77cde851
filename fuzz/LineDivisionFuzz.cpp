// SPDX-License-Identifier: MIT
// The division of text into lines: each fits or is one character, in their order they give the text back less
// blanks and line breaks, none ends within a character, and what is measured stays in proportion. The first
// byte says how wide the lines are, the second how wide the characters of the rest, in bytes.

#include "UtilityDLL/text/private/Character.h"
#include "UtilityDLL/text/private/LineDivision.h"
#include "fuzz/Require.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace {

bool IsLineBreak(wchar_t c) { return c == L'\r' || c == L'\n'; }

// Narrow and wide characters, and some without a width, as in a font.
double Width(std::wstring_view text) {
    double width = 0;
    for (const wchar_t c : text) width += static_cast<double>(static_cast<char32_t>(c) % 4) / 2;
    return width;
}

std::wstring Text(const std::uint8_t* data, std::size_t size, std::size_t bytes) {
    std::wstring text;
    for (std::size_t i = 0; i + bytes <= size; i += bytes) {
        std::uint32_t code = 0;
        for (std::size_t k = bytes; k-- > 0;) code = code << 8 | data[i + k];
        text += static_cast<wchar_t>(code);
    }
    return text;
}

void RequireDropped(std::wstring_view between) {
    for (const wchar_t c : between) Require(IsBlank(c) || IsLineBreak(c), "only blanks and line breaks go");
}

// `rest` is what the line is the beginning of.
void RequireWholeCharacters(std::wstring_view rest, std::size_t length) {
    rest = rest.substr(0, rest.find_first_of(L"\r\n"));
    std::size_t end = 0;
    while (end < length) end = CharacterEnd(rest, end);
    Require(end == length, "no line ends within a character");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2) return 0;
    const double width = data[0] / 4.0;
    const std::wstring text = Text(data + 2, size - 2, data[1] % 3 == 0 ? 1 : data[1] % 3 == 1 ? 2 : 4);
    const std::wstring_view all = text;
    double measured = 0;
    const auto lines = DivideIntoLines(text, width, [&](std::wstring_view piece) {
        measured += static_cast<double>(piece.size());
        return Width(piece);
    });
    Require(!lines.empty(), "a text has a line");
    std::size_t at = 0;
    for (const std::wstring_view line : lines) {
        const auto begin = static_cast<std::size_t>(line.data() - all.data());
        Require(begin >= at && begin + line.size() <= all.size(), "lines are pieces in their order");
        RequireDropped(all.substr(at, begin - at));
        Require(line.find_first_of(L"\r\n") == std::wstring_view::npos, "no line has a line break");
        RequireWholeCharacters(all.substr(begin), line.size());
        const bool isOneCharacter = !line.empty() && CharacterEnd(line, 0) == line.size();
        Require(!(width > 0) || isOneCharacter || Width(line) <= width, "a line fits");
        at = begin + line.size();
    }
    RequireDropped(all.substr(at));
    const auto length = static_cast<double>(all.size());
    Require(measured <= 4 * length * (1 + std::log2(1 + length)), "what is measured is in proportion");
    return 0;
}
