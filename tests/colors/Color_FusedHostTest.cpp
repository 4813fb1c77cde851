// SPDX-License-Identifier: MIT
// This file is compiled as a host may be: for a processor with fused multiply-add, and free to use it. What
// the library's headers bring into it must give the colours that the library gives.

#include "UtilityDLL/colors/DXFColor.h"
#include "UtilityDLL/colors/HSVColor.h"
#include "tests/support/ColorPrinters.h"
#include "tests/support/Random.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace {

// Each step through memory, so that no two become one instruction. The first step's numbers go through it
// too: a product that is computed only once for both sides would not be fused on either.
template <typename Number> Number Rounded(Number number) {
    volatile Number stored = number;
    return stored;
}

int GreyStepByStep(const RGBColor& color) {
    const double red = Rounded(0.3 * Rounded(color.Red()));
    const double green = Rounded(0.59 * Rounded(color.Green()));
    const double blue = Rounded(0.11 * Rounded(color.Blue()));
    return static_cast<int>(Rounded(Rounded(red + green) + blue));
}

class FusedHost : public testing::Test {
protected:
    void SetUp() override {
        if (!HOST_CAN_FUSE)
            GTEST_SKIP() << "this processor or compiler does not multiply and add in one step";
    }
};

} // namespace

// Guards the others: without it they could not fail.
TEST_F(FusedHost, IsFused) {
    Random random(3);
    int differing = 0;
    for (int i = 0; i < 10'000; ++i) {
        const double a = static_cast<double>(random()) / 3.0;
        const double b = static_cast<double>(random()) / 7.0;
        differing += a * b - a != Rounded(Rounded(a) * b) - a;
    }
    EXPECT_LT(0, differing);
}

TEST_F(FusedHost, GreyScaleOfEveryColourIsTheLibrarys) {
    for (int packed = 0; packed < 0x1000000; ++packed) {
        const RGBColor color(packed);
        if (color.Red() == color.Green() && color.Green() == color.Blue()) continue;
        const int grey = GreyStepByStep(color);
        ASSERT_EQ(RGBColor(grey, grey, grey), color.GrayScale()) << packed;
    }
}

TEST_F(FusedHost, HsvToRgbIsTheLibrarys) {
    Random random(5);
    const auto share = [&] { return static_cast<float>(random() % 10'001) / 10'000.0f; };
    for (int i = 0; i < 1'000'000; ++i) {
        const float hue = Rounded(share() * 360.0f);
        const float saturation = share();
        const float value = share();
        if (saturation == 0.0f || hue == 360.0f) continue;
        const float scaled = Rounded(value * 255.0f);
        const float sixths = Rounded(hue / 60.0f);
        const int sector = static_cast<int>(sixths);
        const float fraction = Rounded(sixths - static_cast<float>(sector));
        const float towards = Rounded(1.0f - Rounded(saturation * fraction));
        const float away = Rounded(1.0f - Rounded(Rounded(1.0f - fraction) * saturation));
        const int v = static_cast<int>(scaled);
        const int p = static_cast<int>(Rounded(Rounded(1.0f - saturation) * scaled));
        const int q = static_cast<int>(Rounded(towards * scaled));
        const int t = static_cast<int>(Rounded(away * scaled));
        const RGBColor expected[] = {{v, t, p}, {q, v, p}, {p, v, t}, {p, q, v}, {t, p, v}, {v, p, q}};
        ASSERT_EQ(expected[sector], static_cast<RGBColor>(HSVColor(hue, saturation, value)))
            << hue << ' ' << saturation << ' ' << value;
    }
}

TEST_F(FusedHost, RgbToHsvAndTheNearestIndexAreTheLibrarys) {
    Random random(7);
    for (int i = 0; i < 1'000'000; ++i) {
        const RGBColor color(random());
        const float r = Rounded(Rounded(static_cast<float>(color.Red())) / 255.0f);
        const float g = Rounded(Rounded(static_cast<float>(color.Green())) / 255.0f);
        const float b = Rounded(Rounded(static_cast<float>(color.Blue())) / 255.0f);
        const float max = std::max({r, g, b});
        const float delta = Rounded(max - std::min({r, g, b}));
        if (delta == 0.0f) continue;
        const float rc = Rounded(Rounded(max - r) / delta);
        const float gc = Rounded(Rounded(max - g) / delta);
        const float bc = Rounded(Rounded(max - b) / delta);
        const float sixths = r == max   ? Rounded(bc - gc)
                             : g == max ? Rounded(Rounded(2.0f + rc) - bc)
                                        : Rounded(Rounded(4.0f + gc) - rc);
        const float signedHue = Rounded(sixths * 60.0f);
        const float hue = signedHue < 0.0f ? Rounded(signedHue + 360.0f) : signedHue;
        ASSERT_EQ(hue, HSVColor(color).Hue()) << color;

        const float tenths = Rounded(Rounded(Rounded(hue / 360.0f) * 240.0f) + 5.0f);
        const int group = static_cast<int>(tenths) / 10 * 10;
        const int step = max > 0.8f ? 0 : max > 0.6f ? 2 : max > 0.4f ? 4 : max > 0.2f ? 6 : 8;
        const int index = group + step + (Rounded(delta / max) >= 0.5f ? 10 : 11);
        ASSERT_EQ(index <= 255 ? index : 0, DXFColor(color).Index()) << color;
    }
}
