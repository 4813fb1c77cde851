// SPDX-License-Identifier: MIT
#include "apps/chartutil/terminal/Numbers.h"

#include "VelmBase/NumberText.h"
#include "VelmBase/WideString.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>

namespace {

constexpr double kFirstWithExponent = 1e16;

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// What `write` puts between two places, without the minus of a zero: one that rounding left over only puzzles
// the reader.
template <typename Write> std::string Written(Write write) {
    char text[400]; // a double has up to 309 digits before the point
    const std::string_view number(text, static_cast<std::size_t>(write(text, std::end(text)) - text));
    const bool isMinusZero = number[0] == '-' && number.find_first_not_of("-0.") == std::string_view::npos;
    return std::string(number.substr(isMinusZero));
}

} // namespace

bool ParseNumber(std::string_view text, double& value) {
    constexpr std::string_view kBlanks = " \t";
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) return false;
    text = text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
    if (text.size() > 1 && text[0] == '+' && text[1] != '-') text.remove_prefix(1);
    const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() && stop == text.data() + text.size() && std::isfinite(value);
}

bool ParseNumber(std::string_view text, DecimalNumber& number) {
    if (!ParseNumber(text, number.value)) return false;
    const std::string_view mantissa = text.substr(0, text.find_first_of("eE"));
    const std::string_view fraction = mantissa.substr(std::min(mantissa.find('.'), mantissa.size()));
    double decimals = static_cast<double>(std::count_if(fraction.begin(), fraction.end(), IsDigit));
    double exponent = 0;
    if (mantissa.size() < text.size() && ParseNumber(text.substr(mantissa.size() + 1), exponent))
        decimals -= exponent;
    number.decimals = static_cast<int>(std::clamp(decimals, 0.0, 1000.0));
    return true;
}

double RoundedToDigits(double value, int digits) {
    char text[64];
    const auto end =
        std::to_chars(text, std::end(text), value, std::chars_format::scientific, std::min(digits, 17) - 1);
    std::from_chars(text, end.ptr, value);
    return value;
}

std::string DecimalText(double value) {
    // Without an exponent as long as a reader would write none.
    const bool isPlain = value == 0 || (std::fabs(value) >= 1e-7 && std::fabs(value) < kFirstWithExponent);
    const std::chars_format format = isPlain ? std::chars_format::fixed : std::chars_format::general;
    return Written([&](char* begin, char* end) {
        return std::to_chars(begin, end, RoundedToDigits(value), format).ptr;
    });
}

std::string DecimalText(double value, int decimals) {
    return Written([&](char* begin, char* end) {
        return std::to_chars(begin, end, value, std::chars_format::fixed, decimals).ptr;
    });
}

std::string DecimalText(const DecimalNumber& number) {
    constexpr int kMostDecimals = 20;
    const double size = std::fabs(number.value);
    if (size >= kFirstWithExponent || number.decimals > kMostDecimals) return DecimalText(number.value);
    const int known = size == 0 ? kMostDecimals : 14 - static_cast<int>(std::floor(std::log10(size)));
    return DecimalText(number.value, std::clamp(known, 0, number.decimals));
}

std::string GeneralText(double value, int digits) { return ToUtf8(NumberText::FromGeneral(value, digits)); }
