// SPDX-License-Identifier: MIT
#include "VelmBase/Math.h"

#include <charconv>
#include <string_view>

int GetDoublePrecision(double value) {
    if (!std::isfinite(value)) return 1;
    char text[32];
    const auto end = std::to_chars(text, text + sizeof text, value, std::chars_format::scientific).ptr;
    const std::string_view mantissa(text, std::string_view(text, end).find('e'));
    return static_cast<int>(
        std::count_if(mantissa.begin(), mantissa.end(), [](char c) { return c >= '0' && c <= '9'; }));
}
