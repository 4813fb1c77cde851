#include "apps/chartutil/commands/colors/ColorPictures.h"

#include "apps/chartutil/terminal/ColorText.h"
#include "apps/chartutil/terminal/Numbers.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr RGBColor kBlack(0, 0, 0);
constexpr RGBColor kGrey(96, 96, 96);

} // namespace

Picture PalettePicture() {
    constexpr int kCellWidth = 44;
    constexpr int kCellHeight = 34;
    constexpr int kLeft = 20;
    constexpr int kGroups = 24;
    constexpr int kLevels = 10;
    constexpr int kTop = 120;
    const int bottom = kTop + kLevels * kCellHeight;
    Picture picture(2 * kLeft + kGroups * kCellWidth, bottom + 90);
    const auto cell = [&](int index, double x, double y) {
        const RGBColor color{DXFColor(index)};
        picture.Rectangle(x, y, kCellWidth, kCellHeight, color);
        picture.Text(x + kCellWidth / 2.0, y + kCellHeight / 2.0 + 5, std::to_string(index), 13,
                     ReadableOn(color), Picture::Anchor::MIDDLE);
    };
    const auto frame = [&](double y, int columns, int rows) {
        picture.Frame(kLeft, y, columns * kCellWidth, rows * kCellHeight, kGrey);
    };

    picture.Text(kLeft, 26, "The 256 colours of the DXF palette", 18, kBlack, Picture::Anchor::START, true);
    picture.Text(kLeft, 48, "0 to 9: named colours and two greys", 12, kGrey);
    for (int index = 0; index < 10; ++index) cell(index, kLeft + index * kCellWidth, 55);
    frame(55, 10, 1);

    picture.Text(kLeft, kTop - 12, "10 to 249: 24 hues, 15 degrees apart; odd numbers are half saturated", 12,
                 kGrey);
    for (int group = 0; group < kGroups; ++group)
        for (int level = 0; level < kLevels; ++level)
            cell(10 + 10 * group + level, kLeft + group * kCellWidth, kTop + level * kCellHeight);
    frame(kTop, kGroups, kLevels);

    picture.Text(kLeft, bottom + 28, "250 to 255: greys", 12, kGrey);
    for (int index = 250; index < 256; ++index) cell(index, kLeft + (index - 250) * kCellWidth, bottom + 36);
    frame(bottom + 36, 6, 1);
    return picture;
}

Picture TablePicture(const DXFColorTable& table, const std::string& title, bool dxf) {
    constexpr double kTop = 60;
    constexpr double kLeft = 24;
    constexpr double kBarWidth = 90;
    constexpr int kMostBands = 9000; // of two pixels each
    const int count = table.NumEntries();
    // In whole pixels, so that no light shines through between bands. A band has room for its number as long
    // as the picture stays on a screen; beyond that every so many bands one number stands.
    const double bandHeight = count > kMostBands
                                  ? kMostBands * 2.0 / count
                                  : std::floor(std::clamp(720.0 / std::max(count, 1), 2.0, 26.0));
    const int labelStep = std::max(1, static_cast<int>(std::ceil(15.0 / bandHeight)));
    const double bottom = kTop + bandHeight * count;
    constexpr double kDefaultHeight = 26;
    const int columns = dxf ? 2 : 1;
    const double labelX = kLeft + columns * (kBarWidth + 8) + 4;
    Picture picture(std::max(static_cast<int>(labelX) + 130, 80 + static_cast<int>(title.size()) * 9),
                    static_cast<int>(bottom + kDefaultHeight) + 34);

    picture.Text(kLeft, 28, title, 15, kBlack, Picture::Anchor::START, true);
    const auto column = [&](int number, const char* name, auto colorOf, const RGBColor& below, auto textOf) {
        const double x = kLeft + number * (kBarWidth + 8);
        picture.Text(x, kTop - 8, name, 11, kGrey);
        for (int i = 0; i < count; ++i) {
            const double y = bottom - bandHeight * (i + 1); // the lowest value at the bottom
            picture.Rectangle(x, y, kBarWidth, bandHeight, colorOf(i));
            const std::string text = textOf(i);
            if (bandHeight >= 15 && !text.empty())
                picture.Text(x + kBarWidth / 2, y + bandHeight / 2 + 4, text, 11, ReadableOn(colorOf(i)),
                             Picture::Anchor::MIDDLE);
        }
        if (count > 0) picture.Frame(x, kTop, kBarWidth, bandHeight * count, kGrey);
        picture.Rectangle(x, bottom + 8, kBarWidth, kDefaultHeight, below);
        picture.Frame(x, bottom + 8, kBarWidth, kDefaultHeight, kGrey);
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
        picture.Line(labelX - 8, y, labelX - 3, y, kGrey);
        picture.Text(labelX, y + 4, GeneralText(table.EntryValue(i), 6), 12, kBlack);
    }
    picture.Text(labelX, bottom + 8 + kDefaultHeight / 2 + 4, "below", 12, kGrey);
    return picture;
}
