// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/presentation/TextInfo.h"
#include "apps/chartutil/drawing/Font.h"

#include <string>

/// What the texts of a style are measured and drawn in.
struct FontInUse {
    std::wstring family;      ///< empty when there is no font with outlines that can be used
    std::wstring unusable;    ///< the family that it would be then, if there is one
    bool isInstalled = false; ///< whether that is the family that the style asks for
    double em = 0.0;          ///< these are parts of the height of the font's cell
    double descent = 0.0;
    double capHeight = 0.0; ///< 0 where the font does not tell

    /// The same as a part of the em.
    double CapShare() const { return em > 0 && capHeight > 0 ? capHeight / em : Font().capShare; }
};

FontInUse FindFont(const TextInfo& style);

/// Whether a font of that name is installed, but none with outlines.
bool IsBitmapFont(const std::wstring& face);

/// "Liberation Sans", or "Liberation Sans, since Arial is not installed", or why there is none.
std::string FamilyText(const FontInUse& font, const std::string& asked);
