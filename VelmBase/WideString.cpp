// SPDX-License-Identifier: MIT
#include "VelmBase/WideString.h"

#include "VelmBase/NumberText.h"

#include <algorithm>
#include <limits>

namespace {

bool IsBlank(wchar_t c) { return c == L' ' || (c >= L'\t' && c <= L'\r'); }

std::wstring_view WithoutLeadingBlanks(std::wstring_view text) {
    const auto first = std::find_if_not(text.begin(), text.end(), IsBlank);
    return text.substr(static_cast<std::size_t>(first - text.begin()));
}

void AppendWide(std::wstring& text, char32_t code) {
    if constexpr (sizeof(wchar_t) == 2) {
        if (code > 0xFFFF) {
            text += static_cast<wchar_t>(0xD800 + ((code - 0x10000) >> 10));
            text += static_cast<wchar_t>(0xDC00 + (code & 0x3FF));
            return;
        }
    }
    text += static_cast<wchar_t>(code);
}

void AppendUtf8(std::string& bytes, char32_t code) {
    const auto put = [&](char32_t byte) { bytes += static_cast<char>(byte); };
    if (code < 0x80) {
        put(code);
    } else if (code < 0x800) {
        put(0xC0 | code >> 6);
        put(0x80 | (code & 0x3F));
    } else if (code < 0x10000) {
        put(0xE0 | code >> 12);
        put(0x80 | (code >> 6 & 0x3F));
        put(0x80 | (code & 0x3F));
    } else {
        put(0xF0 | (code >> 18 & 7));
        put(0x80 | (code >> 12 & 0x3F));
        put(0x80 | (code >> 6 & 0x3F));
        put(0x80 | (code & 0x3F));
    }
}

// The length of the well-formed sequence at the start of `bytes` and its code; 0 when there is none.
std::size_t DecodeUtf8(std::string_view bytes, char32_t& code) {
    const auto at = [&](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
    const unsigned char lead = at(0);
    if (lead < 0x80) {
        code = lead;
        return 1;
    }
    const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : lead >= 0xC2 ? 2 : 0;
    if (length == 0 || lead > 0xF4 || bytes.size() < length) return 0;
    code = lead & (0xFF >> (length + 1));
    for (std::size_t i = 1; i < length; ++i) {
        if ((at(i) & 0xC0) != 0x80) return 0;
        code = code << 6 | (at(i) & 0x3F);
    }
    constexpr char32_t kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};
    const bool wellFormed = code >= kSmallest[length] && code <= 0x10FFFF && (code < 0xD800 || code > 0xDFFF);
    return wellFormed ? length : 0;
}

} // namespace

bool icompareW(std::wstring_view a, std::wstring_view b) {
    if (a.size() != b.size()) return false;
    // Mostly the letter case is the same as well, and that is told faster.
    return a == b || std::equal(a.begin(), a.end(), b.begin(),
                                [](wchar_t x, wchar_t y) { return x == y || ToUpperW(x) == ToUpperW(y); });
}

int CompareNoCaseW(std::wstring_view a, std::wstring_view b) {
    if (a == b) return 0;
    const auto [x, y] = std::mismatch(a.begin(), a.end(), b.begin(), b.end(), [](wchar_t c, wchar_t d) {
        return c == d || ToLowerW(c) == ToLowerW(d);
    });
    if (x == a.end()) return y == b.end() ? 0 : -1;
    if (y == b.end()) return 1;
    return ToLowerW(*x) < ToLowerW(*y) ? -1 : 1;
}

std::wstring_view TrimmedW(std::wstring_view text, std::wstring_view set) {
    const std::size_t first = text.find_first_not_of(set);
    if (first == std::wstring_view::npos) return {};
    return text.substr(first, text.find_last_not_of(set) - first + 1);
}

int atoi(std::wstring_view text) {
    text = WithoutLeadingBlanks(text);
    const bool negative = !text.empty() && text[0] == L'-';
    if (negative || (!text.empty() && text[0] == L'+')) text.remove_prefix(1);
    long long value = 0;
    for (const wchar_t c : text) {
        if (c < L'0' || c > L'9') break;
        value = std::min(value * 10 + (c - L'0'), 1LL << 31);
    }
    return static_cast<int>(negative ? -value : std::min<long long>(value, std::numeric_limits<int>::max()));
}

double atof(std::wstring_view text) { return NumberText::LeadingDecimal(WithoutLeadingBlanks(text)); }

std::wstring FromUtf8(std::string_view bytes) {
    std::wstring text;
    text.reserve(bytes.size());
    while (!bytes.empty()) {
        char32_t code = 0;
        std::size_t length = DecodeUtf8(bytes, code);
        if (length == 0) {
            code = 0xDC00 + static_cast<unsigned char>(bytes[0]);
            length = 1;
        }
        AppendWide(text, code);
        bytes.remove_prefix(length);
    }
    return text;
}

std::string ToUtf8(std::wstring_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        auto code = static_cast<char32_t>(text[i]);
        if constexpr (sizeof(wchar_t) == 2) {
            code &= 0xFFFF;
            if (code >= 0xD800 && code < 0xDC00 && i + 1 < text.size()) {
                const char32_t next = static_cast<char32_t>(text[i + 1]) & 0xFFFF;
                if (next >= 0xDC00 && next < 0xE000) {
                    code = 0x10000 + ((code - 0xD800) << 10) + (next - 0xDC00);
                    ++i;
                }
            }
        }
        if (code >= 0xDC80 && code <= 0xDCFF) {
            bytes += static_cast<char>(code - 0xDC00);
        } else {
            AppendUtf8(bytes, code);
        }
    }
    return bytes;
}
