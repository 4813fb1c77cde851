#pragma once

#include "UtilityDLL/presentation/TextInfo.h"

#include <string>

/// What the texts of a style are measured and drawn in.
struct FontInUse {
    std::wstring family;      ///< empty when there is no font with outlines that can be used
    std::wstring unusable;    ///< the family that it would be then, if there is one
    bool isInstalled = false; ///< whether that is the family that the style asks for
    double em = 0.0;          ///< these are parts of the height of the font's cell
    double descent = 0.0;
};

FontInUse FindFont(const TextInfo& style);

/// "Liberation Sans", or "Liberation Sans, since Arial is not installed", or why there is none.
std::string FamilyText(const FontInUse& font, const std::string& asked);
