// SPDX-License-Identifier: MIT
#include "VelmBase/NumberText.h"

#include <algorithm>
#include <charconv>
#include <concepts>
#include <cstdint>
#include <limits>
#include <type_traits>

namespace {

bool IsDigit(wchar_t c) { return c >= L'0' && c <= L'9'; }
bool IsSign(wchar_t c) { return c == L'+' || c == L'-'; }
bool IsSpace(wchar_t c) { return c == L' ' || (c >= L'\t' && c <= L'\r'); }

// What a formatted extraction sees: the text behind the blanks. Empty means that it fails before it looks.
std::wstring_view SkipSpace(std::wstring_view text) {
    while (!text.empty() && IsSpace(text[0])) text.remove_prefix(1);
    return text;
}

template <std::integral Integer> bool ExtractInteger(std::wstring_view text, Integer& value) {
    using Limits = std::numeric_limits<Integer>;
    text = SkipSpace(text);
    if (text.empty()) return false;

    const bool negative = text[0] == L'-';
    if (IsSign(text[0])) text.remove_prefix(1);
    if (text.empty() || !IsDigit(text[0])) {
        value = 0;
        return false;
    }

    // A negative text is fine for an unsigned type: it wraps, but only a magnitude within range does.
    const std::uint64_t limit = negative && std::is_signed_v<Integer>
                                    ? static_cast<std::uint64_t>(Limits::max()) + 1
                                    : static_cast<std::uint64_t>(Limits::max());
    std::uint64_t magnitude = 0;
    for (const wchar_t c : text) {
        if (!IsDigit(c)) break;
        const auto digit = static_cast<std::uint64_t>(c - L'0');
        if (magnitude > (limit - digit) / 10) {
            value = negative && std::is_signed_v<Integer> ? Limits::min() : Limits::max();
            return false;
        }
        magnitude = magnitude * 10 + digit;
    }
    value = static_cast<Integer>(negative ? 0 - magnitude : magnitude);
    return true;
}

// The length of what a stream collects for a floating-point number: it stops at the first character that
// cannot continue one, but takes an exponent mark before it knows that digits follow.
std::size_t CollectedLength(std::wstring_view text) {
    std::size_t i = !text.empty() && IsSign(text[0]) ? 1 : 0;
    bool hasDigits = false;
    bool hasPoint = false;
    bool hasExponent = false;
    for (; i < text.size(); ++i) {
        const wchar_t c = text[i];
        if (IsDigit(c)) {
            hasDigits = true;
        } else if (c == L'.' && !hasPoint && !hasExponent) {
            hasPoint = true;
        } else if ((c == L'e' || c == L'E') && hasDigits && !hasExponent) {
            hasExponent = true;
            if (i + 1 < text.size() && IsSign(text[i + 1])) ++i;
        } else {
            break;
        }
    }
    return i;
}

struct ParsedNumber {
    double value = 0.0;    // signed; infinite above the range
    bool complete = false; // the whole text was a number
};

// The decimal exponent of the first digit that is not 0; only its sign matters.
long long DecimalMagnitude(std::string_view text) {
    const std::size_t mark = std::min(text.find_first_of("eE"), text.size());
    const std::string_view mantissa = text.substr(0, mark);
    const auto point = static_cast<long long>(std::min(mantissa.find('.'), mantissa.size()));
    const auto first = static_cast<long long>(std::min(mantissa.find_first_not_of("0."), mantissa.size()));
    long long exponent = 0;
    if (mark < text.size()) {
        std::string_view digits = text.substr(mark + 1);
        const bool negative = !digits.empty() && digits[0] == '-';
        if (!digits.empty() && (negative || digits[0] == '+')) digits.remove_prefix(1);
        constexpr long long kFar = 1LL << 58; // beyond the length of any text, and ten times it still fits
        for (const char c : digits) exponent = std::min(exponent * 10 + (c - '0'), kFar);
        if (negative) exponent = -exponent;
    }
    return point - first + exponent;
}

template <typename Float> ParsedNumber Parse(std::wstring_view collected) {
    bool negative = false;
    if (!collected.empty() && IsSign(collected[0])) {
        negative = collected[0] == L'-';
        collected.remove_prefix(1);
    }
    char shortText[64];
    std::string longText;
    char* text = shortText;
    if (collected.size() > sizeof shortText) {
        longText.resize(collected.size());
        text = longText.data();
    }
    std::transform(collected.begin(), collected.end(), text, [](wchar_t c) { return static_cast<char>(c); });

    const char* const end = text + collected.size();
    Float value = 0;
    const auto [stop, error] = std::from_chars(text, end, value);
    if (error == std::errc::invalid_argument) return {};
    if (error == std::errc::result_out_of_range)
        value = DecimalMagnitude({text, static_cast<std::size_t>(stop - text)}) > 0
                    ? std::numeric_limits<Float>::infinity()
                    : 0;
    return {static_cast<double>(negative ? -value : value), stop == end};
}

template <std::floating_point Float> bool ExtractFloat(std::wstring_view text, Float& value) {
    text = SkipSpace(text);
    if (text.empty()) return false;
    const ParsedNumber number = Parse<Float>(text.substr(0, CollectedLength(text)));
    if (!number.complete) {
        value = 0;
        return false;
    }
    constexpr double kMax = std::numeric_limits<Float>::max();
    value = static_cast<Float>(std::clamp(number.value, -kMax, kMax));
    return number.value >= -kMax && number.value <= kMax;
}

bool IsNumber(std::wstring_view text, bool mayHavePoint) {
    constexpr std::size_t kAll = std::wstring_view::npos;
    constexpr std::wstring_view kBlanks = L" \t\n\r";
    const auto take = [&](std::wstring_view set, std::size_t most) {
        const std::size_t length = std::min({text.find_first_not_of(set), text.size(), most});
        text.remove_prefix(length);
        return length;
    };
    const auto takeDigits = [&] { return take(L"0123456789", kAll); };
    take(kBlanks, kAll);
    take(L"+-", 1);
    std::size_t digits = takeDigits();
    if (mayHavePoint && take(L".", 1) > 0) digits += takeDigits();
    if (digits == 0) return false;
    if (mayHavePoint && take(L"eE", 1) > 0) {
        take(L"+-", 1);
        if (takeDigits() == 0) return false;
    }
    take(kBlanks, kAll);
    return text.empty();
}

std::wstring Widened(const char* first, const char* last) { return std::wstring(first, last); }

template <std::integral Integer> std::wstring IntegerText(Integer value) {
    char text[24];
    return Widened(text, std::to_chars(text, text + sizeof text, value).ptr);
}

} // namespace

namespace NumberText {

bool Extract(std::wstring_view text, short& value) { return ExtractInteger(text, value); }
bool Extract(std::wstring_view text, unsigned short& value) { return ExtractInteger(text, value); }
bool Extract(std::wstring_view text, int& value) { return ExtractInteger(text, value); }
bool Extract(std::wstring_view text, unsigned int& value) { return ExtractInteger(text, value); }
bool Extract(std::wstring_view text, long& value) { return ExtractInteger(text, value); }
bool Extract(std::wstring_view text, float& value) { return ExtractFloat(text, value); }
bool Extract(std::wstring_view text, double& value) { return ExtractFloat(text, value); }

bool Extract(std::wstring_view text, unsigned long& value) {
    auto narrow = static_cast<std::uint32_t>(value);
    if (SkipSpace(text).empty()) return false;
    const bool good = ExtractInteger(text, narrow);
    value = narrow;
    return good;
}

bool Extract(std::wstring_view text, bool& value) {
    long number = 0;
    if (SkipSpace(text).empty()) return false;
    const bool good = ExtractInteger(text, number);
    value = number != 0;
    return good && (number == 0 || number == 1);
}

bool IsInteger(std::wstring_view text) { return IsNumber(text, false); }
bool IsDecimal(std::wstring_view text) { return IsNumber(text, true); }

std::wstring FromInteger(long long value) { return IntegerText(value); }
std::wstring FromInteger(unsigned long long value) { return IntegerText(value); }

std::wstring FromFixed(double value, int decimals) {
    constexpr int kMost = 15;
    char text[std::numeric_limits<double>::max_exponent10 + kMost + 8];
    const int digits = std::clamp(decimals, 0, kMost);
    return Widened(text,
                   std::to_chars(text, text + sizeof text, value, std::chars_format::fixed, digits).ptr);
}

std::wstring FromGeneral(double value, int precision) {
    constexpr int kMost = 800; // no double has more significant digits
    char text[kMost + 32];
    const int digits = std::clamp(precision, 1, kMost);
    return Widened(text,
                   std::to_chars(text, text + sizeof text, value, std::chars_format::general, digits).ptr);
}

double LeadingDecimal(std::wstring_view text) {
    return Parse<double>(text.substr(0, CollectedLength(text))).value;
}

} // namespace NumberText
