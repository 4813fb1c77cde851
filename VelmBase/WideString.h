// SPDX-License-Identifier: MIT
#pragma once

#include "VelmBase/Export.h"

#include <string>
#include <string_view>

// Letter case is that of ASCII and Latin-1, whatever the locale: names in files must match everywhere alike.

/// The capital of an ASCII or Latin-1 letter; any other character is itself (so are ÿ and µ, whose capitals
/// lie outside Latin-1, and ß).
constexpr wchar_t ToUpperW(wchar_t c) {
    const bool small = (c >= L'a' && c <= L'z') || (c >= 0xE0 && c <= 0xFE && c != 0xF7);
    return small ? static_cast<wchar_t>(c - 0x20) : c;
}

/// The small letter of an ASCII or Latin-1 capital; any other character is itself.
constexpr wchar_t ToLowerW(wchar_t c) {
    const bool capital = (c >= L'A' && c <= L'Z') || (c >= 0xC0 && c <= 0xDE && c != 0xD7);
    return capital ? static_cast<wchar_t>(c + 0x20) : c;
}

/// Equality that ignores letter case.
VELMBASE_API bool icompareW(std::wstring_view a, std::wstring_view b);

/// Order of the texts in small letters, character by character: below, equal to or above 0.
VELMBASE_API int CompareNoCaseW(std::wstring_view a, std::wstring_view b);

/// Whether `a` comes before or behind `b` in the order of CompareNoCaseW().
/// @{
inline bool SmallerW(std::wstring_view a, std::wstring_view b) { return CompareNoCaseW(a, b) < 0; }
inline bool GreaterW(std::wstring_view a, std::wstring_view b) { return CompareNoCaseW(a, b) > 0; }
/// @}

/// `text` without the characters of `set` at both its ends.
/// @{
VELMBASE_API std::wstring_view TrimmedW(std::wstring_view text, std::wstring_view set = L" \t\n\r");
inline std::wstring trimW(std::wstring_view text, std::wstring_view set = L" \t\n\r") {
    return std::wstring(TrimmedW(text, set));
}
/// @}

/// The leading decimal integer: blanks are skipped, a sign may follow, then digits up to the first other
/// character. 0 when there is none; what an int cannot hold becomes its nearest limit.
VELMBASE_API int atoi(std::wstring_view text);

/// The leading decimal number with a point and perhaps an exponent, whatever the locale. 0 when there is none
/// (also for "inf", "nan" and hexadecimal forms); infinity when it is too large.
VELMBASE_API double atof(std::wstring_view text);

/// UTF-8 to wide text and back. Bytes that are no UTF-8 become U+DC80 to U+DCFF and come back as they were,
/// so any file name survives. Unpaired surrogates outside that range are written as three bytes.
/// @{
VELMBASE_API std::wstring FromUtf8(std::string_view bytes);
VELMBASE_API std::string ToUtf8(std::wstring_view text);
/// @}

/// Narrow text of the platform (UTF-8 on Linux, the active ANSI code page on Windows) as wide text.
VELMBASE_API std::wstring FromNarrow(std::string_view text);
