// SPDX-License-Identifier: MIT
#pragma once

#include "apps/chartutil/terminal/UserText.h"

#include <string>
#include <string_view>

/// What the bytes of a settings file stand for. The library takes each for the character of its code; a file
/// of another program may be meant otherwise.
enum class TextEncoding {
    ONE_BYTE, ///< the format's own: a byte is the character of the same code
    UTF_8,
};

/// The text as the library has it of a file in which it stands in that encoding. In ONE_BYTE, characters
/// above U+00FF, which such a file cannot hold, stay what they are.
std::wstring StoredText(const UserText& text, TextEncoding encoding);

/// What such a text of the library says, in UTF-8.
std::string ShownText(std::wstring_view stored, TextEncoding encoding);

/// Whether all bytes are those of ASCII.
bool IsAscii(std::string_view content);

/// Whether there are bytes beyond ASCII in the content of a file, and all of them are UTF-8.
bool LooksLikeUtf8(std::string_view content);

/// "\xEF\xBB\xBF": what some programs begin a file in UTF-8 with.
inline constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
