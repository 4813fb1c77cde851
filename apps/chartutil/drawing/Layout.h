#pragma once

#include "apps/chartutil/drawing/Surface.h"

// What the commands' pictures have in common.

inline constexpr RGBColor kBlack(0, 0, 0);
inline constexpr RGBColor kGrey(96, 96, 96);

/// The baseline of a line of capitals or digits whose middle is at `y`.
inline double BaselineAround(double y, const Font& font) { return y + font.CapHeight() / 2; }
