// SPDX-License-Identifier: MIT
#include "UtilityDLL/colors/RGBColor.h"

#include "tests/support/ColorPrinters.h"
#include "tests/support/Random.h"

#include <gtest/gtest.h>

TEST(RGBColor, IsBlackByDefault) { EXPECT_EQ(RGBColor(0, 0, 0), RGBColor()); }

TEST(RGBColor, ComponentsKeepTheirLowEightBits) {
    struct Row {
        int given, kept;
    };
    for (const Row& row : {Row{0, 0}, Row{255, 255}, Row{256, 0}, Row{300, 44}, Row{-1, 255}, Row{-256, 0},
                           Row{2147483647, 255}, Row{-2147483647 - 1, 0}}) {
        SCOPED_TRACE(row.given);
        RGBColor color(row.given, 0, 0);
        EXPECT_EQ(row.kept, color.Red());
        EXPECT_EQ(row.kept, RGBColor(0, row.given, 0).Green());
        EXPECT_EQ(row.kept, RGBColor(0, 0, row.given).Blue());
        color.SetGreen(row.given);
        color.SetBlue(row.given);
        EXPECT_EQ(row.kept, color.Green());
        EXPECT_EQ(row.kept, color.Blue());
        color.SetRed(1);
        color.SetRed(row.given);
        EXPECT_EQ(RGBColor(row.kept, row.kept, row.kept), color);
    }
    EXPECT_EQ(255, RGBColor::MAX_VALUE());
}

TEST(RGBColor, ColourReferenceHasRedInItsLowestByte) {
    const RGBColor color(0x00123456);
    EXPECT_EQ(0x56, color.Red());
    EXPECT_EQ(0x34, color.Green());
    EXPECT_EQ(0x12, color.Blue());
    EXPECT_EQ(0x00123456ul, static_cast<unsigned long>(color));
}

TEST(RGBColor, ColourReferenceDropsTheUpperBits) {
    EXPECT_EQ(0x00123456ul, static_cast<unsigned long>(RGBColor(0xFF123456ul)));
    EXPECT_EQ(0x00FFFFFFul, static_cast<unsigned long>(RGBColor(-1)));
    EXPECT_EQ(0x00FFFFFFul, static_cast<unsigned long>(RGBColor(0xFFFFFFFFFFFFFFFFull)));
}

TEST(RGBColor, EqualityComparesEveryComponent) {
    const RGBColor color(1, 2, 3);
    EXPECT_EQ(color, RGBColor(1, 2, 3));
    EXPECT_FALSE(color != RGBColor(1, 2, 3));
    for (const RGBColor& other : {RGBColor(9, 2, 3), RGBColor(1, 9, 3), RGBColor(1, 2, 9)})
        EXPECT_NE(color, other);
}

TEST(RGBColor, ComparesWithAColourReference) {
    enum Reference : std::uint32_t { SEA = 0xFFC080 };
    const RGBColor color(0x80, 0xC0, 0xFF);
    EXPECT_TRUE(color == 0xFFC080ul);
    EXPECT_TRUE(0xFFC080ul == color);
    EXPECT_TRUE(color == 0xFFC080u);
    EXPECT_TRUE(color == 0xFFC080);
    EXPECT_TRUE(color == SEA);
    EXPECT_TRUE(color != 0xFFC081ul);
    EXPECT_TRUE(0xFFC081 != color);
    EXPECT_TRUE(color == 0x12FFC080ul); // the upper bits are no part of a colour
}

TEST(RGBColor, GrayScaleOfKnownColours) {
    EXPECT_EQ(RGBColor(76, 76, 76), RGBColor(255, 0, 0).GrayScale());
    EXPECT_EQ(RGBColor(150, 150, 150), RGBColor(0, 255, 0).GrayScale());
    EXPECT_EQ(RGBColor(28, 28, 28), RGBColor(0, 0, 255).GrayScale());
}

TEST(RGBColor, GrayScaleKeepsEveryGrey) {
    for (int grey = 0; grey < 256; ++grey)
        EXPECT_EQ(RGBColor(grey, grey, grey), RGBColor(grey, grey, grey).GrayScale());
}

TEST(RGBColor, GrayScaleIsTheWeightedSumInHundredthsTruncated) {
    // In whole hundredths; where the sum is a whole number, doubles may lie just below it.
    Random random(41);
    for (int i = 0; i < 200'000; ++i) {
        const RGBColor color(random());
        if (color.Red() == color.Green() && color.Green() == color.Blue()) continue;
        const int hundredths = 30 * color.Red() + 59 * color.Green() + 11 * color.Blue();
        const RGBColor grey = color.GrayScale();
        ASSERT_EQ(RGBColor(grey.Red(), grey.Red(), grey.Red()), grey);
        if (hundredths % 100 == 0) {
            ASSERT_GE(hundredths / 100, grey.Red());
            ASSERT_LE(hundredths / 100 - 1, grey.Red());
        } else {
            ASSERT_EQ(hundredths / 100, grey.Red()) << static_cast<unsigned long>(color);
        }
    }
}
