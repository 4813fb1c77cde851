// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/Export.h"

#include <cstddef>
#include <string_view>

/// Where the character that begins at `begin`, as a reader sees it, ends: behind its marks, what joiners join
/// to it, the second half of a surrogate pair, the letters of a Hangul syllable, the second of two regional
/// indicators (a flag). Behind `begin` always, whatever the text; a lone surrogate is a character.
UTILITYDLL_API std::size_t CharacterEnd(std::wstring_view text, std::size_t begin);

/// Whether the character stands for itself as a place where a line may be broken: a space of whatever width
/// or a tab, but no no-break space.
UTILITYDLL_API bool IsBlank(wchar_t character);
