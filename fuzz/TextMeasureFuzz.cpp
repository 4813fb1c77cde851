// SPDX-License-Identifier: MIT
// Measuring text: the bytes up to the first line feed are a text style's one-line form (with the items of a
// depth label, where they are there), the rest is the text, a byte for a character below 128 and two for one
// above. Every style and text give finite numbers, and the heights and lines that were promised.

#include "UtilityDLL/text/TextHeightFactComp.h"
#include "UtilityDLL/text/TextRectComp.h"
#include "fuzz/Require.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string>

// fontconfig keeps its settings by offsets, in which the leak sanitizer sees no reference.
extern "C" const char* __lsan_default_suppressions() { return "leak:libfontconfig"; }

namespace {

void RequireFinite(const TextRectComp::Rectangle& rectangle) {
    Require(std::isfinite(rectangle.Width()) && std::isfinite(rectangle.Height()));
    for (int i = 0; i < 4; ++i)
        Require(std::isfinite(rectangle.Corner(i).X()) && std::isfinite(rectangle.Corner(i).Y()));
}

std::wstring TextOf(const std::uint8_t* begin, const std::uint8_t* end) {
    std::wstring text;
    for (; begin != end; ++begin) {
        const bool isWide = *begin >= 128 && begin + 1 != end;
        text +=
            isWide ? static_cast<wchar_t>((begin[0] & 127) << 8 | begin[1]) : static_cast<wchar_t>(*begin);
        if (isWide) ++begin;
    }
    return text;
}

void CheckHeightFactor(const TextInfo& style) {
    TextHeightFactComp& factors = TextHeightFactComp::Get();
    const float factor = factors(style);
    Require(std::isfinite(factor));
    Require(factors(style) == factor);
    const double height = double{style.Size()} * 1000.0;
    if (!(std::fabs(height) < 2147483648.0)) Require(factor == 0.0f, "a height that does not fit");
    if (std::fabs(height) < 1.0) Require(factor == 0.0f, "no height");
    const OUTLINETEXTMETRICW& metrics = factors.GetMetrics(style);
    if (factor != 0.0f) Require(metrics.otmTextMetrics.tmHeight != 0 && metrics.otmEMSquare != 0);
}

void CheckRectangles(const TextInfo& style, const std::wstring& text) {
    TextRectComp measure;
    const TextRectComp::Rectangle rectangle = measure(style, text);
    RequireFinite(rectangle);
    Require(std::isfinite(measure.GetTextHeight()));
    const int count = measure.GetNumberOfSubStrings();
    Require(count >= 0 && static_cast<std::size_t>(count) <= text.size() + 1);
    std::size_t characters = 0;
    for (int i = 0; i < count; ++i) characters += measure.GetSubString(i).size();
    Require(characters <= text.size());
    const TextRectComp::Rectangle again = measure(style, text);
    Require(again.Width() == rectangle.Width() && again.Height() == rectangle.Height());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::uint8_t* const end = data + size;
    const std::uint8_t* const split = std::find(data, end, '\n');
    const std::wstring line(data, split);
    const std::wstring text = split == end ? L"" : TextOf(split + 1, end);

    TextHeightFactComp::Get() = TextHeightFactComp(); // or memory would grow with the run
    TextInfo style;
    style.FromString(line);
    CheckHeightFactor(style);
    CheckRectangles(style, text);

    DepthLabelInfo label;
    label.FromString(line);
    double value = 0;
    std::memcpy(&value, data, std::min(size, sizeof value)); // any number, NaN and infinities among them
    for (const double depth : {value, std::wcstod(text.c_str(), nullptr)}) {
        TextRectComp measure;
        const auto [whole, decimals] = measure(label, depth);
        RequireFinite(whole.first);
        RequireFinite(decimals.first);
        Require(whole.second.find(L'\0') == std::wstring::npos);
    }
    return 0;
}
