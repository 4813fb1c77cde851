// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/text/TextRectComp.h"
#include "apps/chartutil/drawing/FontInUse.h"

#include <string>
#include <vector>

/// A measured text as it stands about its insertion point, which is the origin, y up.
struct DrawnText {
    struct Line {
        std::wstring text;
        GTL::Point2D<double> start; ///< of its baseline
        double width;
    };

    TextInfo style;
    FontInUse font;
    TextRectComp::Rectangle box;
    std::vector<Line> lines;
    double cellHeight = 0.0;
};

/// Puts the lines that a text was divided into, its only one as well, into the rectangle that was measured
/// for them: a line fills the height of the font's cell, or with a baseline justification stands with its
/// baseline on the rectangle's lower side, below which its descenders hang. Lines keep to the side that the
/// justification names.
DrawnText LayOut(const TextInfo& style, const FontInUse& font, const TextRectComp::Rectangle& box,
                 const std::vector<std::wstring>& lines);
