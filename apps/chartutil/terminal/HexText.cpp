// SPDX-License-Identifier: MIT
#include "apps/chartutil/terminal/HexText.h"

std::string HexText(const RGBColor& color) {
    constexpr char kDigits[] = "0123456789ABCDEF";
    std::string text = "#";
    for (const int component : {color.Red(), color.Green(), color.Blue()}) {
        text += kDigits[component / 16];
        text += kDigits[component % 16];
    }
    return text;
}

RGBColor ReadableOn(const RGBColor& background) {
    return background.GrayScale().Red() < 128 ? RGBColor(255, 255, 255) : RGBColor(0, 0, 0);
}
