// SPDX-License-Identifier: MIT
#include "apps/chartutil/commands/colors/PalettePicture.h"

#include "UtilityDLL/colors/DXFColor.h"
#include "apps/chartutil/drawing/Layout.h"
#include "apps/chartutil/terminal/HexText.h"

Surface PalettePicture() {
    constexpr double kMargin = 5;
    constexpr double kCellWidth = 11;
    constexpr double kCellHeight = 8.5;
    constexpr int kGroups = 24;
    constexpr int kLevels = 10;
    constexpr double kNamed = 16; // the upper edges of the three blocks of cells
    constexpr double kHues = 32;
    constexpr double kGreys = kHues + kLevels * kCellHeight + 7.5;
    constexpr double kToText = 2; // from a block up to the line of text over it
    const Font kTitle{4.5, true};
    const Font kNote{3};
    const Font kNumber{3.25};

    Surface surface(2 * kMargin + kGroups * kCellWidth, kGreys + kCellHeight + kMargin);
    const auto cell = [&](int index, double x, double y) {
        const RGBColor color{DXFColor(index)};
        DrawSwatch(surface, x, y, kCellWidth, kCellHeight, color);
        surface.Text(x + kCellWidth / 2, BaselineAround(y + kCellHeight / 2, kNumber), std::to_string(index),
                     kNumber, ReadableOn(color), Surface::Anchor::MIDDLE);
    };
    const auto heading = [&](double y, const char* text) {
        surface.Text(kMargin, y - kToText, text, kNote, kGrey);
    };
    const auto frame = [&](double y, int columns, int rows) {
        surface.Frame(kMargin, y, columns * kCellWidth, rows * kCellHeight, {kGrey});
    };

    surface.Text(kMargin, kMargin + kTitle.CapHeight(), "The 256 colours of the DXF palette", kTitle, kBlack);
    heading(kNamed, "0 to 9: named colours and two greys");
    for (int index = 0; index < 10; ++index) cell(index, kMargin + index * kCellWidth, kNamed);
    frame(kNamed, 10, 1);

    heading(kHues, "10 to 249: 24 hues, 15 degrees apart; odd numbers are half saturated");
    for (int group = 0; group < kGroups; ++group)
        for (int level = 0; level < kLevels; ++level)
            cell(10 + 10 * group + level, kMargin + group * kCellWidth, kHues + level * kCellHeight);
    frame(kHues, kGroups, kLevels);

    heading(kGreys, "250 to 255: greys");
    for (int index = 250; index < 256; ++index) cell(index, kMargin + (index - 250) * kCellWidth, kGreys);
    frame(kGreys, 6, 1);
    return surface;
}
