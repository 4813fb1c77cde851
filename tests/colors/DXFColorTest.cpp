// SPDX-License-Identifier: MIT
#include "UtilityDLL/colors/DXFColor.h"

#include "UtilityDLL/colors/HSVColor.h"
#include "tests/support/ColorPrinters.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <optional>
#include <type_traits>

namespace {

// A copy of the palette as drawing standards print it, entered apart from the library's.
constexpr const char* kPalette[] = {
    "000000 FF0000 FFFF00 00FF00 00FFFF 0000FF FF00FF 000000",
    "808080 C0C0C0 FF0000 FF827F A50800 A55952 7F0C00 7F473F",
    "4C0B00 4C2C26 260700 261713 FF3F00 FFA27F A53100 A56D52",
    "7F2C00 7F573F 4C1E00 4C3626 261100 261C13 FF7F00 FFC27F",
    "A55B00 A58252 7F4C00 7F673F 4C3100 4C4026 261A00 262013",
    "FFBF00 FFE27F A58400 A59752 7F6C00 7F773F 4C4400 4C4926",
    "262400 262513 FFFF00 FBFF7F 9DA500 9FA552 727F00 777F3F",
    "414C00 454C26 1E2600 212613 BFFF00 DBFF7F 74A500 8AA552",
    "527F00 677F3F 2D4C00 3C4C26 152600 1D2613 7FFF00 BCFF7F",
    "4AA500 76A552 327F00 577F3F 1A4C00 324C26 0B2600 182613",
    "3FFF00 9CFF7F 21A500 61A552 137F00 477F3F 074C00 294C26",
    "012600 132613 00FF00 7FFF82 00A508 52A559 007F0C 3F7F47",
    "004C0B 264C2C 002607 132617 00FF3F 7FFFA2 00A531 52A56D",
    "007F2C 3F7F57 004C1E 264C36 002611 13261C 00FF7F 7FFFC2",
    "00A55B 52A582 007F4C 3F7F67 004C31 264C40 00261A 132620",
    "00FFBF 7FFFE2 00A584 52A597 007F6C 3F7F77 004C44 264C49",
    "002624 132625 00FFFF 7FFBFF 009DA5 529FA5 00727F 3F777F",
    "00414C 26454C 001E26 132126 00BFFF 7FDBFF 0074A5 528AA5",
    "00527F 3F677F 002D4C 263C4C 001526 131D26 007FFF 7FBCFF",
    "004AA5 5276A5 00337F 3F577F 001A4C 26324C 000B26 131826",
    "003FFF 7F9CFF 0021A5 5261A5 00137F 3F477F 00074C 26294C",
    "000126 131326 0000FF 827FFF 0800A5 5952A5 0C007F 473F7F",
    "0B004C 2C264C 070026 171326 3F00FF A27FFF 3100A5 6D52A5",
    "2C007F 573F7F 1E004C 36264C 110026 1C1326 7F00FF C27FFF",
    "5B00A5 8252A5 4C007F 673F7F 31004C 40264C 1A0026 201326",
    "BF00FF E27FFF 8400A5 9752A5 6C007F 773F7F 44004C 49264C",
    "240026 251326 FF00FF FF7FFB A5009D A5529F 7F0072 7F3F77",
    "4C0041 4C2645 26001E 261321 FF00BF FF7FDB A50074 A5528A",
    "7F0052 7F3F67 4C002D 4C263C 260015 26131D FF007F FF7FBC",
    "A5004A A55276 7F0033 7F3F57 4C001A 4C2632 26000B 261318",
    "FF003F FF7F9C A50021 A55261 7F0013 7F3F47 4C0007 4C2629",
    "260001 261313 545454 767676 989898 BABABA DCDCDC FFFFFF",
};

RGBColor PaletteColor(int index) {
    const std::string row = kPalette[index / 8];
    const int packed = std::stoi(row.substr(static_cast<std::size_t>(index % 8) * 7, 6), nullptr, 16);
    return {packed >> 16, packed >> 8, packed};
}

// The rule as it is written down, step by step in floats, without the library's colour classes.
int IndexByTheRule(int red, int green, int blue) {
    if (red == 0 && green == 0 && blue == 0) return 0;
    if (red == green && green == blue) {
        float best = 9e20f;
        int winner = -1;
        for (int index = 250; index <= 255; ++index) {
            const RGBColor entry = PaletteColor(index);
            const float dr = static_cast<float>(red - entry.Red());
            const float dg = static_cast<float>(green - entry.Green());
            const float db = static_cast<float>(blue - entry.Blue());
            const float distance = dr * dr + dg * dg + db * db;
            if (distance >= best) continue;
            best = distance;
            winner = index;
        }
        return winner == 255 ? 7 : winner;
    }
    const float r = static_cast<float>(red / 255.0);
    const float g = static_cast<float>(green / 255.0);
    const float b = static_cast<float>(blue / 255.0);
    float max = r;
    if (g > max) max = g;
    if (b > max) max = b;
    float min = r;
    if (g < min) min = g;
    if (b < min) min = b;
    const float saturation = (max - min) / max;
    const float delta = max - min;
    const float rc = (max - r) / delta;
    const float gc = (max - g) / delta;
    const float bc = (max - b) / delta;
    float hue;
    if (r == max)
        hue = bc - gc;
    else if (g == max)
        hue = 2 + rc - bc;
    else
        hue = 4 + gc - rc;
    hue *= 60;
    if (hue < 0) hue += 360;
    const int group = static_cast<int>(std::trunc(hue / 360 * 240 + 5)) / 10 * 10;
    const int step = max > 0.8f ? 0 : max > 0.6f ? 2 : max > 0.4f ? 4 : max > 0.2f ? 6 : 8;
    const int index = group + step + (saturation >= 0.5f ? 10 : 11);
    return index <= 255 ? index : 0;
}

// The index in whole numbers, free of rounding; nothing for a hue that lies exactly on a border between two
// groups, where rounding decides.
std::optional<int> IndexInWholeNumbers(int red, int green, int blue) {
    const int max = std::max({red, green, blue});
    const int delta = max - std::min({red, green, blue});
    // The hue in units of 1/delta of 60 degrees, from 0 to 6 delta.
    const int hue = red == max     ? (green - blue + 6 * delta) % (6 * delta)
                    : green == max ? blue - red + 2 * delta
                                   : red - green + 4 * delta;
    // hue / (6 delta) * 24 groups + 1/2
    if ((8 * hue + delta) % (2 * delta) == 0) return std::nullopt;
    const int group = (8 * hue + delta) / (2 * delta);
    // The borders are 0.8, 0.6, 0.4 and 0.2 of 255; on them it is the next darker step, as 204/255 is not
    // above 0.8.
    const int step = max > 204 ? 0 : max > 153 ? 2 : max > 102 ? 4 : max > 51 ? 6 : 8;
    const int index = 10 * group + step + (2 * delta >= max ? 10 : 11);
    return index <= 255 ? index : 0;
}

} // namespace

TEST(DXFColor, IsIndexZeroByDefault) { EXPECT_EQ(0, DXFColor().Index()); }

TEST(DXFColor, IndicesOutsideThePaletteAreZero) {
    for (int index = 0; index < 256; ++index) EXPECT_EQ(index, DXFColor(index).Index());
    for (const int index : {-1, 256, 300, 2147483647, -2147483647 - 1}) EXPECT_EQ(0, DXFColor(index).Index());
}

TEST(DXFColor, NamedColours) {
    const DXFColor named[] = {DXFColor::_BLACK, DXFColor::_RED,  DXFColor::_YELLOW,  DXFColor::_GREEN,
                              DXFColor::_CYAN,  DXFColor::_BLUE, DXFColor::_MAGENTA, DXFColor::_WHITE};
    for (int index = 0; index < 8; ++index) EXPECT_EQ(index, named[index].Index());
}

TEST(DXFColor, PaletteIsTheFormats) {
    for (int index = 0; index < 256; ++index) {
        SCOPED_TRACE(index);
        EXPECT_EQ(PaletteColor(index), static_cast<RGBColor>(DXFColor(index)));
        EXPECT_EQ(static_cast<unsigned long>(PaletteColor(index)),
                  static_cast<unsigned long>(DXFColor(index)));
    }
}

TEST(DXFColor, White7IsBlack) { EXPECT_EQ(RGBColor(0, 0, 0), RGBColor(DXFColor(7))); }

TEST(DXFColor, ConvertsToItsIndexAndToItsColour) {
    const int index = DXFColor(5);
    const unsigned long colorref = DXFColor(5);
    const RGBColor color = DXFColor(5);
    EXPECT_EQ(5, index);
    EXPECT_EQ(0xFF0000ul, colorref);
    EXPECT_EQ(RGBColor(0, 0, 255), color);
}

TEST(DXFColor, EqualityComparesIndices) {
    EXPECT_EQ(DXFColor(7), DXFColor::_WHITE);
    EXPECT_NE(DXFColor(7), DXFColor(0)); // the same black in the palette
}

TEST(DXFColor, WhatPromotesToASignedNumberIsAnIndex) {
    enum Unscoped { FIFTH = 5 };
    enum Small : std::uint8_t { SMALL_FIFTH = 5 };
    EXPECT_EQ(5, DXFColor(static_cast<char>(5)).Index());
    EXPECT_EQ(5, DXFColor(static_cast<signed char>(5)).Index());
    EXPECT_EQ(5, DXFColor(static_cast<unsigned char>(5)).Index());
    EXPECT_EQ(5, DXFColor(static_cast<char8_t>(5)).Index());
    EXPECT_EQ(5, DXFColor(static_cast<char16_t>(5)).Index());
    EXPECT_EQ(5, DXFColor(static_cast<wchar_t>(5)).Index());
    EXPECT_EQ(5, DXFColor(static_cast<short>(5)).Index());
    EXPECT_EQ(5, DXFColor(static_cast<unsigned short>(5)).Index());
    EXPECT_EQ(5, DXFColor(5).Index());
    EXPECT_EQ(5, DXFColor(5L).Index());
    EXPECT_EQ(5, DXFColor(5LL).Index());
    EXPECT_EQ(5, DXFColor(FIFTH).Index());
    EXPECT_EQ(5, DXFColor(SMALL_FIFTH).Index());
    EXPECT_EQ(1, DXFColor(true).Index());
    EXPECT_EQ(0, DXFColor(static_cast<unsigned short>(300)).Index());
    EXPECT_EQ(0, DXFColor(0x100000005LL).Index()); // not cut to its low bits
    EXPECT_EQ(0, DXFColor(-1LL).Index());
}

TEST(DXFColor, WhatPromotesToAnUnsignedNumberIsAColourReference) {
    enum Reference : std::uint32_t { SEA = 0xFF0000 };
    EXPECT_EQ(170, DXFColor(0xFF0000u).Index());
    EXPECT_EQ(170, DXFColor(0xFF0000ul).Index());
    EXPECT_EQ(170, DXFColor(0xFF0000ull).Index());
    EXPECT_EQ(170, DXFColor(static_cast<char32_t>(0xFF0000)).Index());
    EXPECT_EQ(170, DXFColor(SEA).Index());
    EXPECT_EQ(18, DXFColor(5u).Index()); // a dark red
}

TEST(DXFColor, IsNotMadeOfOtherThings) {
    enum class Scoped { FIFTH = 5 };
    struct Number {
        operator int() const { return 5; }
    };
    static_assert(!std::is_constructible_v<DXFColor, Scoped>);
    static_assert(!std::is_constructible_v<DXFColor, double>);
    static_assert(!std::is_constructible_v<DXFColor, Number>);
    static_assert(!std::is_constructible_v<DXFColor, const char*>);
}

TEST(DXFColor, ComparesWithAnIndexAsItsIndex) {
    enum Unscoped { FIFTH = 5 };
    const DXFColor blue(5);
    EXPECT_TRUE(blue == 5);
    EXPECT_TRUE(5 == blue);
    EXPECT_TRUE(blue != 6);
    EXPECT_TRUE(6 != blue);
    EXPECT_TRUE(blue == static_cast<unsigned char>(5));
    EXPECT_TRUE(blue == 5LL);
    EXPECT_TRUE(blue == FIFTH);
    EXPECT_TRUE(DXFColor(1) == true);
    for (const int none : {-1, 256, 300}) EXPECT_TRUE(DXFColor(none) != none); // but it is 0
}

TEST(DXFColor, ComparesWithAColourAsThePalettesColour) {
    const DXFColor blue(5);
    EXPECT_TRUE(blue == RGBColor(0, 0, 255));
    EXPECT_TRUE(RGBColor(0, 0, 255) == blue);
    EXPECT_TRUE(blue != RGBColor(0, 0, 254)); // whose nearest index is 170
    EXPECT_TRUE(RGBColor(0, 0, 254) != DXFColor(170));
    EXPECT_TRUE(blue == 0xFF0000ul);
    EXPECT_TRUE(0xFF0000ul == blue);
    EXPECT_TRUE(0xFF0000u == blue);
    EXPECT_TRUE(blue != 5u);
    EXPECT_TRUE(DXFColor(7) == RGBColor());
    EXPECT_TRUE(blue == HSVColor(240, 1, 1));
}

TEST(DXFColor, NearestIndexOfAnRgbColour) {
    struct Row {
        int r, g, b, index;
    };
    for (const Row& row :
         {Row{0, 0, 0, 0}, Row{255, 255, 255, 7}, Row{128, 128, 128, 251}, Row{84, 84, 84, 250},
          Row{1, 1, 1, 250}, Row{254, 254, 254, 7}, Row{101, 101, 101, 250}, // as far from 250 as from 251
          Row{255, 0, 0, 10}, // the hue group's red, not the named one
          Row{0, 0, 255, 170}, Row{255, 0, 128, 230}, Row{255, 127, 127, 10}, // saturation just above a half
          Row{255, 128, 128, 11},                                             // and just below
          Row{255, 0, 8, 250},                         // past 352.5 degrees a hue lands among the greys
          Row{200, 150, 152, 253}, Row{40, 30, 31, 0}, // 259 is no index
          Row{204, 0, 0, 12},                          // 204/255 is not above 0.8
          Row{205, 0, 0, 10}, Row{51, 0, 0, 18}, Row{52, 0, 0, 16}}) {
        SCOPED_TRACE(::testing::Message() << row.r << ' ' << row.g << ' ' << row.b);
        const RGBColor color(row.r, row.g, row.b);
        EXPECT_EQ(row.index, DXFColor(color).Index());
        EXPECT_EQ(row.index, DXFColor(static_cast<unsigned long>(color)).Index());
        EXPECT_EQ(row.index, DXFColor(static_cast<std::uint32_t>(color)).Index());
    }
}

TEST(DXFColor, NearestIndexFollowsTheRuleForEveryColour) {
    long borders = 0;
    for (int red = 0; red < 256; ++red) {
        for (int green = 0; green < 256; ++green) {
            for (int blue = 0; blue < 256; ++blue) {
                const int index = DXFColor(RGBColor(red, green, blue)).Index();
                ASSERT_EQ(IndexByTheRule(red, green, blue), index) << red << ' ' << green << ' ' << blue;
                if (red == green && green == blue) continue;
                const std::optional<int> exact = IndexInWholeNumbers(red, green, blue);
                if (exact)
                    ASSERT_EQ(*exact, index) << red << ' ' << green << ' ' << blue;
                else
                    ++borders;
            }
        }
    }
    // Guards the check itself: few colours may escape the exact rule.
    EXPECT_LT(borders, 0x1000000 / 100);
}

TEST(DXFColor, AnHsvColourGoesByItsRgb) { EXPECT_EQ(170, DXFColor(HSVColor(240, 1, 1)).Index()); }
