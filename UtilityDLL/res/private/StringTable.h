// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/Export.h"

#include <cstdint>
#include <span>

/// The resource numbers of the library's texts: its messages from 9064 to 9086, what its dialogs show from
/// 9100.
enum class TextId : std::uint32_t {
#define LIBRARY_TEXT(name, number, text) name = (number),
#include "UtilityDLL/res/private/Texts.inc"
#undef LIBRARY_TEXT
};

/// A text of the library's own: what is shown where a language file has nothing for it.
struct BuiltInText {
    TextId id;
    const wchar_t* text;
};

/// All of them, by ascending numbers.
UTILITYDLL_API std::span<const BuiltInText> BuiltInTexts();

/// The text of that number, to keep as long as the library is loaded: in the language that was chosen when it
/// was loaded (VelmBase/ResourceModule.h), the library's own where that language lacks it. Empty for a number
/// that the library does not have. Any thread may call this.
UTILITYDLL_API const wchar_t* LoadText(TextId id);
