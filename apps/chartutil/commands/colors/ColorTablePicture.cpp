// SPDX-License-Identifier: MIT
#include "apps/chartutil/commands/colors/ColorTablePicture.h"

#include "VelmBase/NumberText.h"
#include "VelmBase/WideString.h"
#include "apps/chartutil/drawing/Layout.h"
#include "apps/chartutil/terminal/HexText.h"
#include "apps/chartutil/work/LongWork.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double kMargin = 6;
constexpr double kTop = 16.5; // of the uppermost band
constexpr double kBarWidth = 22.5;
constexpr double kBarGap = 2;
constexpr double kDefaultHeight = 6.5;
constexpr double kLinePitch = 3.75;     // of the smaller texts
constexpr double kLowestOutlined = 1.5; // of lower bands there would be little else to see
const Font kTitle{3.75, true};
const Font kHeading{2.75};
const Font kIndex{2.75};
const Font kLabel{3};

// In whole quarters of a millimetre, the pixels of a PNG. A band has room for its number as long as the
// picture stays on a screen, and goes down to half a millimetre as long as it stays on a page.
double BandHeight(int count) {
    constexpr int kMostBands = 9000;
    if (count > kMostBands) return kMostBands * 0.5 / count;
    return std::floor(std::clamp(180.0 / std::max(count, 1), 0.5, 6.5) * 4) / 4;
}

} // namespace

Surface ColorTablePicture(const DXFColorTable& table, const std::string& title, bool dxf) {
    const int count = table.NumEntries();
    const double bandHeight = BandHeight(count);
    const double bottom = kTop + bandHeight * count;
    const double defaultTop = bottom + kBarGap;
    const double ticksX = kMargin + (dxf ? 2 : 1) * (kBarWidth + kBarGap) - 1;
    const double labelX = ticksX + 2;
    // Where bands are low, every so many of them one value stands.
    const int labelStep = std::max(1, static_cast<int>(std::ceil(kLinePitch / bandHeight)));
    const auto label = [&](int i) { return ToUtf8(NumberText::FromGeneral(table.EntryValue(i), 6)); };
    double right = std::max(kMargin + kTitle.Width(title), labelX + kLabel.Width("below"));
    for (int i = 0; i < count; i += labelStep) right = std::max(right, labelX + kLabel.Width(label(i)));
    Surface surface(right + kMargin, defaultTop + kDefaultHeight + kMargin);

    surface.Text(kMargin, kMargin + kTitle.CapHeight(), title, kTitle, kBlack);
    const auto column = [&](int number, const char* name, auto colorOf, const RGBColor& below, auto textOf) {
        const double x = kMargin + number * (kBarWidth + kBarGap);
        surface.Text(x, kTop - 2, name, kHeading, kGrey);
        for (int i = 0; i < count; ++i) {
            StopIfInterrupted();
            const double y = bottom - bandHeight * (i + 1);
            if (bandHeight >= kLowestOutlined)
                DrawSwatch(surface, x, y, kBarWidth, bandHeight, colorOf(i));
            else
                surface.Rectangle(x, y, kBarWidth, bandHeight, colorOf(i));
            const std::string text = textOf(i);
            if (bandHeight >= kLinePitch && !text.empty())
                surface.Text(x + kBarWidth / 2, BaselineAround(y + bandHeight / 2, kIndex), text, kIndex,
                             ReadableOn(colorOf(i)), Surface::Anchor::MIDDLE);
        }
        if (count > 0) surface.Frame(x, kTop, kBarWidth, bandHeight * count, {kGrey});
        surface.Rectangle(x, defaultTop, kBarWidth, kDefaultHeight, below);
        surface.Frame(x, defaultTop, kBarWidth, kDefaultHeight, {kGrey});
    };
    column(
        0, "colour", [&](int i) { return RGBColor(table.EntryColor(i)); }, RGBColor(table.DefaultColor()),
        [](int) { return std::string(); });
    if (dxf)
        column(
            1, "DXF", [&](int i) { return RGBColor(table.EntryDxfColor(i)); },
            RGBColor(DXFColor(table.DefaultColor())),
            [&](int i) { return std::to_string(table.EntryDxfColor(i).Index()); });

    // A value stands at the lower border of the band that it opens.
    for (int i = 0; i < count; i += labelStep) {
        const double y = bottom - bandHeight * i;
        surface.Line(ticksX, y, ticksX + 1.25, y, {kGrey});
        surface.Text(labelX, BaselineAround(y, kLabel), label(i), kLabel, kBlack);
    }
    surface.Text(labelX, BaselineAround(defaultTop + kDefaultHeight / 2, kLabel), "below", kLabel, kGrey);
    return surface;
}
