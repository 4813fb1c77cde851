#include "UtilityDLL/contours/private/NumberField.h"

#include "VelmBase/NumberText.h"
#include "VelmBase/WideString.h"

#include <algorithm>
#include <cmath>

FieldRange LineWidths() { return {0, static_cast<double>(std::numeric_limits<float>::max())}; }

double SteppedWidth(double width, int steps) {
    constexpr double kPerUnit = 10;
    return std::max(0.0, std::round(width * kPerUnit) + steps) / kPerUnit;
}

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
