// SPDX-License-Identifier: MIT
#include "apps/chartutil/drawing/LinePen.h"

#include <algorithm>

Surface::Pen PenOf(const LineInfo& line) {
    constexpr double kThinnest = 0.05;
    Surface::Pen pen{RGBColor(line.Color()), std::max(static_cast<double>(line.Width()), kThinnest)};
    if (line.Style() == LineInfo::DASHED) pen.dashes = {3, 1.5};
    if (line.Style() == LineInfo::DOT) pen.dashes = {0.3, 0.9};
    if (line.Style() == LineInfo::DASH_DOT) pen.dashes = {3, 1, 0.3, 1};
    return pen;
}
