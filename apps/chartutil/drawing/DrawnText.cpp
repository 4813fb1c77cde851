// SPDX-License-Identifier: MIT
#include "apps/chartutil/drawing/DrawnText.h"

#include "apps/chartutil/work/LongWork.h"

namespace {

// What share of the room that a line leaves stands before it.
double ShareBefore(const TextInfo& style) { return style.AcadHJust() / 2.0; }

} // namespace

DrawnText LayOut(const TextInfo& style, const FontInUse& font, const TextRectComp::Rectangle& box,
                 const std::vector<std::wstring>& lines) {
    DrawnText drawn{style, font, box, {}, 0.0};
    TextRectComp measure;
    TextInfo single = style;
    single.SetMultiLine(false);
    single.SetRotation(0.0);
    const double lineHeight = measure(single, L"x").Height();
    if (lines.empty() || lineHeight <= 0) return drawn;
    single.SetJustification(TextInfo::BOTTOM_LEFT);
    drawn.cellHeight = measure(single, L"x").Height();
    double scale = 1; // of a part of a label that is smaller than its style
    double spacing = 0;
    if (lines.size() == 1)
        drawn.cellHeight *= scale = box.Height() / lineHeight;
    else
        spacing = (box.Height() - lineHeight) / static_cast<double>(lines.size() - 1);

    const GTL::Vector2D<double> along = box.Corner(1) - box.Corner(0);
    const GTL::Vector2D<double> up = box.Corner(3) - box.Corner(0);
    const double baseline = style.IsOnBaseline() ? 0 : font.descent * drawn.cellHeight;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        StopIfInterrupted();
        const double width = lines.size() == 1 ? box.Width() : measure(single, lines[i]).Width();
        const double y = spacing * static_cast<double>(lines.size() - 1 - i) + baseline;
        const double x = (box.Width() - width) * ShareBefore(style);
        const double u = box.Width() > 0 ? x / box.Width() : 0;
        const double v = y / box.Height();
        drawn.lines.push_back(
            {lines[i],
             {box.Corner(0).X() + u * along.X() + v * up.X(), box.Corner(0).Y() + u * along.Y() + v * up.Y()},
             width});
    }
    return drawn;
}
