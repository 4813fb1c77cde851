// SPDX-License-Identifier: MIT
#include "UtilityDLL/colors/HSVColor.h"

#include "tests/support/ColorPrinters.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace {

void ExpectHsv(float hue, float saturation, float value, const HSVColor& color) {
    EXPECT_EQ(hue, color.Hue());
    EXPECT_EQ(saturation, color.Saturation());
    EXPECT_EQ(value, color.Value());
}

RGBColor Rgb(float hue, float saturation, float value) { return HSVColor(hue, saturation, value); }

} // namespace

TEST(HSVColor, IsAllZeroByDefault) { ExpectHsv(0, 0, 0, HSVColor()); }

TEST(HSVColor, StoresAHueOf360AsZeroAndNothingElseChanged) {
    HSVColor color(360.0f, 1.0f, 1.0f);
    ExpectHsv(0, 1, 1, color);
    EXPECT_EQ(RGBColor(255, 0, 0), static_cast<RGBColor>(color));
    color.SetHue(7.0f);
    color.SetHue(360.0f);
    EXPECT_EQ(0.0f, color.Hue());
    for (const float hue : {-1.0f, -30.0f, 359.99997f, 360.00003f, 1e30f}) {
        color.SetHue(hue);
        EXPECT_EQ(hue, color.Hue());
        EXPECT_EQ(hue, HSVColor(hue, 0, 0).Hue());
    }
    color.SetSaturation(-3.0f);
    color.SetValue(17.0f);
    EXPECT_EQ(-3.0f, color.Saturation());
    EXPECT_EQ(17.0f, color.Value());
}

TEST(HSVColor, KnownColours) {
    ExpectHsv(HSVColor::UNDEFINED_HUE, 0, 1, RGBColor(255, 255, 255));
    ExpectHsv(-1, 0, 0, RGBColor(0, 0, 0));
    ExpectHsv(240, 1, 1, RGBColor(0, 0, 255));
    ExpectHsv(120, 1, 1, RGBColor(0, 255, 0));
    ExpectHsv(60, 1, 1, RGBColor(255, 255, 0)); // red and green tie: the red branch gives the same hue
    const HSVColor pink(RGBColor(255, 0, 128));
    EXPECT_NEAR(329.9, pink.Hue(), 0.05);
    EXPECT_EQ(1.0f, pink.Saturation());
    EXPECT_EQ(1.0f, pink.Value());
}

TEST(HSVColor, TakesAColourReference) {
    const unsigned long blue = 0x00FF0000;
    ExpectHsv(240, 1, 1, HSVColor(blue));
    EXPECT_EQ(blue, static_cast<unsigned long>(HSVColor(blue)));
}

template <typename A, typename B>
concept HaveEquality = requires(A a, B b) {
    a == b;
};
template <typename A, typename B>
concept HaveInequality = requires(A a, B b) {
    a != b;
};

TEST(HSVColor, HasNoEquality) {
    static_assert(!HaveEquality<HSVColor, HSVColor>);
    static_assert(!HaveEquality<const HSVColor&, HSVColor&>);
    static_assert(!HaveInequality<HSVColor, HSVColor>);
    static_assert(HaveEquality<HSVColor, RGBColor>); // as the colour that it converts to
    EXPECT_TRUE(RGBColor(0, 0, 255) == HSVColor(240, 1, 1));
    EXPECT_TRUE(HSVColor(240, 1, 1) != RGBColor(0, 0, 254));
    EXPECT_TRUE(HSVColor(240, 1, 1) == 0xFF0000ul);
}

// The hexagon formula in doubles, from the textbook rather than from the class.
TEST(HSVColor, AgreesWithTheHexagonFormulaForEveryColour) {
    for (int packed = 0; packed < 0x1000000; ++packed) {
        const RGBColor color(packed);
        const double r = color.Red() / 255.0;
        const double g = color.Green() / 255.0;
        const double b = color.Blue() / 255.0;
        const double max = std::max({r, g, b});
        const double chroma = max - std::min({r, g, b});
        const HSVColor hsv(color);
        ASSERT_NEAR(max, hsv.Value(), 1e-6);
        ASSERT_NEAR(max > 0 ? chroma / max : 0, hsv.Saturation(), 1e-6);
        if (chroma == 0) {
            ASSERT_EQ(HSVColor::UNDEFINED_HUE, hsv.Hue());
            continue;
        }
        const double sixths = max == r   ? std::fmod((g - b) / chroma + 6, 6)
                              : max == g ? (b - r) / chroma + 2
                                         : (r - g) / chroma + 4;
        ASSERT_NEAR(60 * sixths, hsv.Hue(), 1e-3) << packed;
        ASSERT_GE(hsv.Hue(), 0.0f);
        ASSERT_LT(hsv.Hue(), 360.0f);
    }
}

TEST(HSVColor, RoundTripLosesAtMostOneUnitAComponent) {
    for (int packed = 0; packed < 0x1000000; packed += 7) {
        const RGBColor color(packed);
        const RGBColor back = HSVColor(color);
        ASSERT_LE(std::abs(color.Red() - back.Red()), 1) << packed;
        ASSERT_LE(std::abs(color.Green() - back.Green()), 1) << packed;
        ASSERT_LE(std::abs(color.Blue() - back.Blue()), 1) << packed;
    }
}

TEST(HSVColor, UnsaturatedColourIsGreyWithTheUndefinedHueAndBlackWithAnyOther) {
    EXPECT_EQ(RGBColor(127, 127, 127), Rgb(-1, 0, 0.5f));
    EXPECT_EQ(RGBColor(255, 255, 255), Rgb(-1, 0, 1));
    EXPECT_EQ(RGBColor(), Rgb(120, 0, 0.5f));
    EXPECT_EQ(RGBColor(), Rgb(0, 0, 0.5f));
    EXPECT_EQ(RGBColor(), Rgb(-2, 0, 0.5f));
}

TEST(HSVColor, EachSectorPlacesTheComponents) {
    // value 1 and saturation 0.5: V 255, p 127; a quarter into the sector q 223, t 159 (truncated).
    struct Row {
        float hue;
        RGBColor color;
    };
    for (const Row& row : {Row{15, {255, 159, 127}}, Row{75, {223, 255, 127}}, Row{135, {127, 255, 159}},
                           Row{195, {127, 223, 255}}, Row{255, {159, 127, 255}}, Row{315, {255, 127, 223}}})
        EXPECT_EQ(row.color, Rgb(row.hue, 0.5f, 1)) << row.hue;
}

TEST(HSVColor, HuesOutsideTheCircleAreBlack) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float inf = std::numeric_limits<float>::infinity();
    for (const float hue : {360.00003f, 400.0f, 1e30f, -0.5f, -30.0f, -1000.0f, -1e30f, nan, inf, -inf})
        EXPECT_EQ(RGBColor(), Rgb(hue, 1, 1)) << hue;
}

TEST(HSVColor, ComponentsOutsideTheirRangeKeepTheLowEightBits) {
    EXPECT_EQ(RGBColor(510 & 255, 0, 0), Rgb(0, 1, 2));
    const float nan = std::numeric_limits<float>::quiet_NaN();
    EXPECT_EQ(RGBColor(), Rgb(0, 1, nan)); // and no undefined behaviour
    EXPECT_EQ(RGBColor(), Rgb(0, 1, 1e30f));
}

TEST(HSVColor, UndefinedHueOfASaturatedColourLiesInTheFirstSector) {
    EXPECT_EQ(RGBColor(255, 125, 127), Rgb(HSVColor::UNDEFINED_HUE, 0.5f, 1));
}
