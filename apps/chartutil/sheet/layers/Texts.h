// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/presentation/DepthLabelInfo.h"
#include "apps/chartutil/drawing/DrawnText.h"
#include "apps/chartutil/drawing/Surface.h"
#include "apps/chartutil/sheet/scene/Occupied.h"

#include <string>
#include <vector>

/// A text on the sheet: its lines about an insertion point on the paper.
struct PlacedText {
    std::vector<DrawnText> parts;
    Surface::Point place;

    /// What it covers of the paper, with `gap` round it.
    Occupied::Box Box(double gap) const;

    void Draw(Surface& surface) const;
};

/// The text in a style that is turned by `degrees` clockwise besides. No parts where it cannot be measured.
PlacedText PlaceText(const TextInfo& style, const std::wstring& text, Surface::Point place,
                     double degrees = 0);

/// A depth by its record, but rounded to the safe side: no label shows more depth, nor less height of what
/// dries, than there is.
PlacedText PlaceDepth(const DepthLabelInfo& style, double depth, Surface::Point place);
