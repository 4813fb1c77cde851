// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/Export.h"

#include <functional>
#include <string_view>
#include <vector>

/// How wide a piece of text is. What it begins with should be no wider, or lines are not always as long as
/// they could be.
using TextWidth = std::function<double(std::wstring_view)>;

/// Divides a text into lines that fit `width`, in the unit of the measure. A width that is not above 0 wraps
/// nothing. The lines are pieces of the text; a text has one at least.
///
///   - CR LF, LF and CR end a line, and what is behind the last of them is a line, too. So lines can be
///   empty.
///   - A line that is too wide is broken at the last blanks (IsBlank) up to which it fits. The blanks there
///     are dropped, however many; those that a line begins or ends with otherwise are kept. Wrapping makes no
///     empty lines: at the beginning, blanks that leave no room for the word behind them are dropped, and of
///     blanks alone that do not fit an empty line is left.
///   - A word that is too wide for a line of its own is broken between characters (CharacterEnd) where the
///     line is full. A line has one character at least, fit or not.
///
/// The measure is asked of steps that double until they are too long, and then halve: for n characters in
/// lines of k, of 4 n (1 + log2(1 + k)) characters at most.
UTILITYDLL_API std::vector<std::wstring_view> DivideIntoLines(std::wstring_view text, double width,
                                                              const TextWidth& measure);
