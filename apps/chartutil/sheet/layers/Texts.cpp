// SPDX-License-Identifier: MIT
#include "apps/chartutil/sheet/layers/Texts.h"

#include "UtilityDLL/text/TextRectComp.h"
#include "VelmBase/WideString.h"

#include <algorithm>
#include <limits>
#include <map>

namespace {

// A sheet has many texts of few styles.
const FontInUse& FontOf(const TextInfo& style) {
    static std::map<TextInfo, FontInUse> fonts;
    const auto found = fonts.find(style);
    return found != fonts.end() ? found->second : fonts.emplace(style, FindFont(style)).first->second;
}

} // namespace

Occupied::Box PlacedText::Box(double gap) const {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    Occupied::Box box = {kInfinity, kInfinity, -kInfinity, -kInfinity};
    for (const DrawnText& part : parts) {
        for (int i = 0; i < 4; ++i) {
            const double x = place.x + part.box.Corner(i).X(), y = place.y - part.box.Corner(i).Y();
            box = {std::min(box.left, x), std::min(box.top, y), std::max(box.right, x),
                   std::max(box.bottom, y)};
        }
    }
    return {box.left - gap, box.top - gap, box.right + gap, box.bottom + gap};
}

void PlacedText::Draw(Surface& surface) const {
    for (const DrawnText& part : parts) {
        const Font font{part.font.em * part.cellHeight,
                        (part.style.Style() & TextInfo::BOLD) != 0,
                        (part.style.Style() & TextInfo::ITALIC) != 0,
                        (part.style.Style() & TextInfo::UNDERLINE) != 0,
                        ToUtf8(part.font.family),
                        part.font.CapShare()};
        for (const DrawnText::Line& line : part.lines)
            surface.FittedText(place.x + line.start.X(), place.y - line.start.Y(), ToUtf8(line.text), font,
                               RGBColor(part.style.Color()), line.width, -part.box.Rotation().Get(),
                               {part.style.AcadHJust(), part.style.AcadVJust()});
    }
}

PlacedText PlaceText(const TextInfo& style, const std::wstring& text, Surface::Point place, double degrees) {
    TextInfo turned = style;
    turned.SetRotation(style.Rotation() + Angle(degrees));
    TextRectComp measure;
    const TextRectComp::Rectangle box = measure(turned, text);
    PlacedText placed{{}, place};
    if (box.Height() == 0) return placed;
    std::vector<std::wstring> lines;
    lines.reserve(static_cast<std::size_t>(measure.GetNumberOfSubStrings()));
    for (int i = 0; i < measure.GetNumberOfSubStrings(); ++i) lines.push_back(measure.GetSubString(i));
    placed.parts.push_back(LayOut(turned, FontOf(turned), box, lines));
    return placed;
}

PlacedText PlaceDepth(const DepthLabelInfo& style, double depth, Surface::Point place) {
    PlacedText placed{{}, place};
    const double height = style.GetSignIsInverted() ? depth : -depth;
    constexpr double kNone = 1e-9; // what calculations leave of 0
    const bool isUnderlined = style.GetUnderlineDryingHeights() && height > kNone;
    DepthLabelInfo written = style;
    // To the safe side: the record rounds towards what is deeper of its sign, so it is given the other one.
    // The line of a drying height says what its sign would.
    written.SetSignIsInverted(isUnderlined == style.GetSignIsInverted());
    const auto [whole, decimals] = TextRectComp()(written, isUnderlined ? -depth : depth);
    const FontInUse& font = FontOf(style);
    const auto add = [&](const auto& part) {
        const auto& [box, text] = part;
        if (!text.empty() && box.Height() != 0) placed.parts.push_back(LayOut(style, font, box, {text}));
    };
    add(whole);
    if (isUnderlined && !placed.parts.empty())
        placed.parts.front().style.SetStyle(placed.parts.front().style.Style() | TextInfo::UNDERLINE);
    add(decimals);
    if (placed.parts.size() == 2) { // which stay together in every font
        placed.parts[0].style.SetJustification(TextInfo::BASELINE_RIGHT);
        placed.parts[1].style.SetJustification(TextInfo::BASELINE_LEFT);
    }
    return placed;
}
