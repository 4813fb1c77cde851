// SPDX-License-Identifier: MIT
#pragma once

#include "apps/chartutil/terminal/UserText.h"

#include <string>

/// A layout as text. Files of the suite are one byte a character, others UTF-8; a file whose bytes are no
/// UTF-8 is one of the suite's.
struct Layout {
    std::wstring text;
    bool isLatin1 = false;
};

/// Reads a layout; with `isLatin1` as one byte a character, whatever its bytes. Ends the command when it
/// cannot be read, and for UTF-16.
Layout ReadLayout(const UserText& path, bool isLatin1);

/// The bytes of a text in a layout's form. With `isLatin1` it has no character above U+00FF.
std::string Encoded(const std::wstring& text, bool isLatin1);
