// SPDX-License-Identifier: MIT
#include "UtilityDLL/colors/DXFColor.h"

#include "UtilityDLL/colors/HSVColor.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace {

// The palette as RRGGBB, eight to a row; the comments are the rows' first indices.
constexpr std::uint32_t kPalette[256] = {
    0x000000, 0xFF0000, 0xFFFF00, 0x00FF00, 0x00FFFF, 0x0000FF, 0xFF00FF, 0x000000, // 0
    0x808080, 0xC0C0C0, 0xFF0000, 0xFF827F, 0xA50800, 0xA55952, 0x7F0C00, 0x7F473F, // 8
    0x4C0B00, 0x4C2C26, 0x260700, 0x261713, 0xFF3F00, 0xFFA27F, 0xA53100, 0xA56D52, // 16
    0x7F2C00, 0x7F573F, 0x4C1E00, 0x4C3626, 0x261100, 0x261C13, 0xFF7F00, 0xFFC27F, // 24
    0xA55B00, 0xA58252, 0x7F4C00, 0x7F673F, 0x4C3100, 0x4C4026, 0x261A00, 0x262013, // 32
    0xFFBF00, 0xFFE27F, 0xA58400, 0xA59752, 0x7F6C00, 0x7F773F, 0x4C4400, 0x4C4926, // 40
    0x262400, 0x262513, 0xFFFF00, 0xFBFF7F, 0x9DA500, 0x9FA552, 0x727F00, 0x777F3F, // 48
    0x414C00, 0x454C26, 0x1E2600, 0x212613, 0xBFFF00, 0xDBFF7F, 0x74A500, 0x8AA552, // 56
    0x527F00, 0x677F3F, 0x2D4C00, 0x3C4C26, 0x152600, 0x1D2613, 0x7FFF00, 0xBCFF7F, // 64
    0x4AA500, 0x76A552, 0x327F00, 0x577F3F, 0x1A4C00, 0x324C26, 0x0B2600, 0x182613, // 72
    0x3FFF00, 0x9CFF7F, 0x21A500, 0x61A552, 0x137F00, 0x477F3F, 0x074C00, 0x294C26, // 80
    0x012600, 0x132613, 0x00FF00, 0x7FFF82, 0x00A508, 0x52A559, 0x007F0C, 0x3F7F47, // 88
    0x004C0B, 0x264C2C, 0x002607, 0x132617, 0x00FF3F, 0x7FFFA2, 0x00A531, 0x52A56D, // 96
    0x007F2C, 0x3F7F57, 0x004C1E, 0x264C36, 0x002611, 0x13261C, 0x00FF7F, 0x7FFFC2, // 104
    0x00A55B, 0x52A582, 0x007F4C, 0x3F7F67, 0x004C31, 0x264C40, 0x00261A, 0x132620, // 112
    0x00FFBF, 0x7FFFE2, 0x00A584, 0x52A597, 0x007F6C, 0x3F7F77, 0x004C44, 0x264C49, // 120
    0x002624, 0x132625, 0x00FFFF, 0x7FFBFF, 0x009DA5, 0x529FA5, 0x00727F, 0x3F777F, // 128
    0x00414C, 0x26454C, 0x001E26, 0x132126, 0x00BFFF, 0x7FDBFF, 0x0074A5, 0x528AA5, // 136
    0x00527F, 0x3F677F, 0x002D4C, 0x263C4C, 0x001526, 0x131D26, 0x007FFF, 0x7FBCFF, // 144
    0x004AA5, 0x5276A5, 0x00337F, 0x3F577F, 0x001A4C, 0x26324C, 0x000B26, 0x131826, // 152
    0x003FFF, 0x7F9CFF, 0x0021A5, 0x5261A5, 0x00137F, 0x3F477F, 0x00074C, 0x26294C, // 160
    0x000126, 0x131326, 0x0000FF, 0x827FFF, 0x0800A5, 0x5952A5, 0x0C007F, 0x473F7F, // 168
    0x0B004C, 0x2C264C, 0x070026, 0x171326, 0x3F00FF, 0xA27FFF, 0x3100A5, 0x6D52A5, // 176
    0x2C007F, 0x573F7F, 0x1E004C, 0x36264C, 0x110026, 0x1C1326, 0x7F00FF, 0xC27FFF, // 184
    0x5B00A5, 0x8252A5, 0x4C007F, 0x673F7F, 0x31004C, 0x40264C, 0x1A0026, 0x201326, // 192
    0xBF00FF, 0xE27FFF, 0x8400A5, 0x9752A5, 0x6C007F, 0x773F7F, 0x44004C, 0x49264C, // 200
    0x240026, 0x251326, 0xFF00FF, 0xFF7FFB, 0xA5009D, 0xA5529F, 0x7F0072, 0x7F3F77, // 208
    0x4C0041, 0x4C2645, 0x26001E, 0x261321, 0xFF00BF, 0xFF7FDB, 0xA50074, 0xA5528A, // 216
    0x7F0052, 0x7F3F67, 0x4C002D, 0x4C263C, 0x260015, 0x26131D, 0xFF007F, 0xFF7FBC, // 224
    0xA5004A, 0xA55276, 0x7F0033, 0x7F3F57, 0x4C001A, 0x4C2632, 0x26000B, 0x261318, // 232
    0xFF003F, 0xFF7F9C, 0xA50021, 0xA55261, 0x7F0013, 0x7F3F47, 0x4C0007, 0x4C2629, // 240
    0x260001, 0x261313, 0x545454, 0x767676, 0x989898, 0xBABABA, 0xDCDCDC, 0xFFFFFF, // 248
};

// The same as colour references.
constexpr auto kReferences = [] {
    std::array<std::uint32_t, 256> references{};
    for (std::size_t i = 0; i < references.size(); ++i)
        references[i] = (kPalette[i] & 0xFF) << 16 | (kPalette[i] & 0xFF00) | (kPalette[i] >> 16 & 0xFF);
    return references;
}();

constexpr int kFirstGrey = 250;
constexpr int kLastGrey = 255;

int NearestGrey(int grey) {
    // The palette's greys ascend, and of two that are equally near the lower index counts.
    const auto distance = [grey](int index) {
        return std::abs(grey - static_cast<int>(kPalette[index] & 0xFF));
    };
    int best = kFirstGrey;
    for (int index = kFirstGrey + 1; index <= kLastGrey; ++index)
        if (distance(index) < distance(best)) best = index;
    return best;
}

// n / divisor as n * kReciprocals[divisor] >> 24: exact while n * divisor is below 2^24.
constexpr auto kReciprocals = [] {
    std::array<std::uint32_t, 2 * 255 + 1> reciprocals{};
    for (std::uint32_t divisor = 1; divisor < reciprocals.size(); ++divisor)
        reciprocals[divisor] = (1u << 24) / divisor + 1;
    return reciprocals;
}();

// The group of a hue, 0 to 24, by the rule in floats.
int GroupOfHue(float hue) { return static_cast<int>(hue / 360.0f * 240.0f + 5.0f) / 10; }

// The same in whole numbers, which takes a fraction of the time. The rule rounds 24 hue / 360 degrees; only
// on a border between two groups does the rounding of the floats decide.
int GroupOf(const RGBColor& color, int max, int delta) {
    const int red = color.Red();
    const int green = color.Green();
    const int blue = color.Blue();
    // Sixths of the circle, in units of 1/delta. Sums of products instead of branches, which no processor
    // could foresee.
    const int isRed = red == max;
    const int isGreen = (green == max) & (isRed ^ 1);
    const int isBlue = 1 - isRed - isGreen;
    const int sixths = isRed * (green - blue + 6 * delta * (green < blue)) +
                       isGreen * (blue - red + 2 * delta) + isBlue * (red - green + 4 * delta);

    const int dividend = 8 * sixths + delta;
    const int divisor = 2 * delta;
    const auto quotient = static_cast<int>(
        static_cast<std::uint64_t>(dividend) * kReciprocals[static_cast<std::size_t>(divisor)] >> 24);
    return quotient * divisor != dividend ? quotient : GroupOfHue(HSVColor(color).Hue());
}

} // namespace

const DXFColor DXFColor::_BLACK(0);
const DXFColor DXFColor::_RED(1);
const DXFColor DXFColor::_YELLOW(2);
const DXFColor DXFColor::_GREEN(3);
const DXFColor DXFColor::_CYAN(4);
const DXFColor DXFColor::_BLUE(5);
const DXFColor DXFColor::_MAGENTA(6);
const DXFColor DXFColor::_WHITE(7);

int DXFColor::NearestIndex(const RGBColor& color) {
    const int max = std::max(std::max(color.Red(), color.Green()), color.Blue());
    const int delta = max - std::min(std::min(color.Red(), color.Green()), color.Blue());
    if (max == 0) return 0;
    if (delta == 0) {
        const int grey = NearestGrey(max);
        return grey == kLastGrey ? _WHITE.Index() : grey;
    }
    // The borders are fifths of 255; on one it is the darker step.
    const int darkness = 4 - ((max > 51) + (max > 102) + (max > 153) + (max > 204));
    const int halfSaturated = 2 * delta < max;
    return 10 * GroupOf(color, max, delta) + 2 * darkness + 10 + halfSaturated;
}

DXFColor::operator unsigned long() const { return kReferences[m_index]; }
