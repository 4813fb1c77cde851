// SPDX-License-Identifier: MIT
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

/// The number that a user wrote: digits with a point before the decimals, in every locale, with a sign and an
/// exponent if wanted, and blanks around. Texts that say no number, or one outside the range, are faults.
UTILITYDLL_API FieldNumber ReadNumber(const std::wstring& text, const FieldRange& range = {});

/// A field that shows a number, rounded maybe. What the user leaves as it is keeps its value to the last
/// digit.
struct NumberField {
    double value = 0;
    std::wstring shown; ///< empty for a field that begins without a number
    FieldRange range;

    /// The number when the field has this text. A value that is not finite does not stay.
    UTILITYDLL_API FieldNumber Read(const std::wstring& text) const;
};

/// Any level, with two decimals.
UTILITYDLL_API NumberField LevelField(double level);

/// The width of a line, with up to six digits: what a `float` holds, and not below 0.
UTILITYDLL_API NumberField WidthField(float width);

/// What is wrong with the interval of a range that would make more than a million levels, which no user wants
/// and which might not fit into memory as rows of a list. A range that makes none is not its matter.
UTILITYDLL_API std::optional<TextId> IntervalFault(double lowest, double highest, double interval);

/// The text of a field for a width after so many steps of 0.1 up or down: on a whole number of steps, at
/// least 0. A text that is no width stays.
UTILITYDLL_API std::wstring StepWidth(const std::wstring& text, int steps);
