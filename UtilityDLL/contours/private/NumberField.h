#pragma once

#include "UtilityDLL/Export.h"
#include "UtilityDLL/res/private/StringTable.h"

#include <limits>
#include <optional>
#include <string>

/// What a field for a number says.
struct FieldNumber {
    double value = 0;            ///< only without a fault
    std::optional<TextId> fault; ///< what is wrong with the text, in a sentence
};

/// Which numbers a field takes.
struct FieldRange {
    double lowest = -std::numeric_limits<double>::max();
    double highest = std::numeric_limits<double>::max();
};

/// Widths of lines: what a `float` holds, and not below 0.
UTILITYDLL_API FieldRange LineWidths();

/// The width so many steps of 0.1 up or down, at least 0, on a whole number of steps.
UTILITYDLL_API double SteppedWidth(double width, int steps);

/// The number in a field: digits with a point before the decimals, in every locale, with a sign and an
/// exponent if wanted, and blanks around. Texts that say no number, or one outside the range, are faults.
UTILITYDLL_API FieldNumber ReadNumber(const std::wstring& text, const FieldRange& range = {});
