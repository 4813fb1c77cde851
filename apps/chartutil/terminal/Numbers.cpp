#include "apps/chartutil/terminal/Numbers.h"

#include "VelmBase/NumberText.h"
#include "VelmBase/WideString.h"

#include <charconv>
#include <cmath>
#include <iterator>

bool ParseNumber(std::string_view text, double& value) {
    constexpr std::string_view kBlanks = " \t";
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) return false;
    text = text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
    if (text.size() > 1 && text[0] == '+' && text[1] != '-') text.remove_prefix(1);
    const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() && stop == text.data() + text.size() && std::isfinite(value);
}

std::string DecimalText(double value, int decimals) {
    char text[400]; // a double has up to 309 digits before the point
    // Without an exponent as long as a reader would write none.
    const bool isPlain = value == 0 || (std::fabs(value) >= 1e-7 && std::fabs(value) < 1e16);
    const auto end = decimals < 0
                         ? std::to_chars(text, std::end(text), value,
                                         isPlain ? std::chars_format::fixed : std::chars_format::general)
                         : std::to_chars(text, std::end(text), value, std::chars_format::fixed, decimals);
    const std::string_view number(text, static_cast<std::size_t>(end.ptr - text));
    const bool isMinusZero = number[0] == '-' && number.find_first_not_of("-0.") == std::string_view::npos;
    return std::string(number.substr(isMinusZero)); // a minus that rounding left over only puzzles the reader
}

std::string GeneralText(double value, int digits) { return ToUtf8(NumberText::FromGeneral(value, digits)); }
