// SPDX-License-Identifier: MIT
#include "apps/chartutil/files/TextEncoding.h"

#include "VelmBase/SettingsText.h"

#include <algorithm>

std::wstring StoredText(const UserText& text, TextEncoding encoding) {
    return encoding == TextEncoding::UTF_8 ? SETTINGS::Widened(text.Utf8()) : text.Wide();
}

std::string ShownText(std::wstring_view stored, TextEncoding encoding) {
    if (encoding == TextEncoding::ONE_BYTE) return ToUtf8(stored);
    std::string bytes(stored.size(), '\0');
    std::ranges::transform(stored, bytes.begin(), [](wchar_t c) { return static_cast<char>(c); });
    return bytes;
}

bool IsAscii(std::string_view content) {
    return std::ranges::all_of(content, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

bool LooksLikeUtf8(std::string_view content) {
    if (IsAscii(content)) return false;
    const std::wstring text = FromUtf8(content);
    // A byte that is no part of a character in UTF-8 becomes one half of a pair, without the other.
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isHalf = text[i] >= 0xDC80 && text[i] < 0xDD00;
        const bool isPaired = i > 0 && text[i - 1] >= 0xD800 && text[i - 1] < 0xDC00;
        if (isHalf && !isPaired) return false;
    }
    return true;
}
