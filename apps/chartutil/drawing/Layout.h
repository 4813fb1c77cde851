// SPDX-License-Identifier: MIT
#pragma once

#include "apps/chartutil/drawing/Surface.h"

#include <vector>

// What the commands' pictures have in common.

inline constexpr RGBColor kBlack(0, 0, 0);
inline constexpr RGBColor kGrey(96, 96, 96);

/// The baseline of a line of capitals or digits whose middle is at `y`.
inline double BaselineAround(double y, const Font& font) { return y + font.CapHeight() / 2; }

/// Whether a line or a small area in that colour is hard to see on white.
bool IsPale(const RGBColor& color);

/// A rectangle that shows a colour; a pale one has a thin grey outline within it.
void DrawSwatch(Surface& surface, double x, double y, double width, double height, const RGBColor& color);

/// A line that shows a pen; a pale one has a thin grey outline round each of its dashes.
void DrawSample(Surface& surface, const std::vector<Surface::Point>& points, const Surface::Pen& pen);
