// SPDX-License-Identifier: MIT
#include "UtilityDLL/contours/private/NumberField.h"

#include "VelmBase/NumberText.h"
#include "VelmBase/WideString.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr FieldRange kWidths = {0, static_cast<double>(std::numeric_limits<float>::max())};

} // namespace

FieldNumber ReadNumber(const std::wstring& text, const FieldRange& range) {
    if (TrimmedW(text).empty()) return {0, TextId::NUMBER_MISSING};
    if (!NumberText::IsDecimal(text)) {
        const bool hasComma = text.find(L',') != std::wstring::npos;
        return {0, hasComma ? TextId::NUMBER_WITH_COMMA : TextId::NUMBER_WRONG};
    }
    const double value = atof(text);
    if (value > range.highest) return {0, TextId::NUMBER_TOO_LARGE};
    if (value < range.lowest)
        return {0, range.lowest == 0 ? TextId::NUMBER_NEGATIVE : TextId::NUMBER_TOO_SMALL};
    return {value, std::nullopt};
}

FieldNumber NumberField::Read(const std::wstring& text) const {
    if (text == shown && !shown.empty() && std::isfinite(value)) return {value, std::nullopt};
    return ReadNumber(text, range);
}

NumberField LevelField(double level) { return {level, NumberText::FromFixed(level, 2), {}}; }

NumberField WidthField(float width) {
    const auto value = static_cast<double>(width);
    return {value, NumberText::FromGeneral(value), kWidths};
}

std::optional<TextId> IntervalFault(double lowest, double highest, double interval) {
    constexpr double kMost = 1'000'000;
    if (!(lowest < highest) || !(interval > 0)) return std::nullopt;
    // By quotients, for a difference can be beyond a double where they are not; a NaN is of two infinite
    // ones.
    if (highest / interval - lowest / interval < kMost) return std::nullopt;
    return TextId::RANGE_TOO_FINE;
}

std::wstring StepWidth(const std::wstring& text, int steps) {
    constexpr double kPerUnit = 10;
    const FieldNumber width = ReadNumber(text, kWidths);
    if (width.fault) return text;
    return NumberText::FromGeneral(std::max(0.0, std::round(width.value * kPerUnit) + steps) / kPerUnit);
}
