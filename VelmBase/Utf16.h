// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string_view>

/// Calls `feed(unit)` with every UTF-16 code unit of `text`. A character above U+FFFF, which only a 32-bit
/// `wchar_t` can hold in one piece, is fed as its surrogate pair; so sums and counts are the same everywhere.
template <typename Feed> void ForEachUtf16Unit(std::wstring_view text, Feed feed) {
    for (const wchar_t character : text) {
        const auto code = static_cast<char32_t>(character);
        if constexpr (sizeof(wchar_t) > 2) {
            if (code > 0xFFFF) {
                const char32_t offset = code - 0x10000;
                feed(static_cast<char16_t>(0xD800 + ((offset >> 10) & 0x3FF)));
                feed(static_cast<char16_t>(0xDC00 + (offset & 0x3FF)));
                continue;
            }
        }
        feed(static_cast<char16_t>(code));
    }
}

/// The number of UTF-16 code units of `text`.
inline std::size_t Utf16Length(std::wstring_view text) {
    std::size_t length = text.size();
    if constexpr (sizeof(wchar_t) > 2) {
        for (const wchar_t character : text) {
            const auto code = static_cast<char32_t>(character);
            length += code > 0xFFFF;
        }
    }
    return length;
}
