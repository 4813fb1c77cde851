// SPDX-License-Identifier: MIT
#include "apps/chartutil/terminal/Columns.h"

#include "VelmBase/WideString.h"

std::size_t TextWidth(std::string_view text) {
    const std::wstring wide = FromUtf8(text);
    std::size_t width = wide.size();
    // Where a wide character has 16 bits, two of them are one character above U+FFFF.
    for (std::size_t i = 1; i < wide.size(); ++i)
        width -= wide[i - 1] >= 0xD800 && wide[i - 1] < 0xDC00 && wide[i] >= 0xDC00 && wide[i] < 0xE000;
    return width;
}

std::string Padded(std::string_view text, std::size_t width, Align align) {
    const std::size_t own = TextWidth(text);
    const std::string blanks(own < width ? width - own : 0, ' ');
    return align == Align::LEFT ? std::string(text) + blanks : blanks + std::string(text);
}
