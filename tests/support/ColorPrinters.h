// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/colors/DXFColor.h"
#include "UtilityDLL/colors/HSVColor.h"
#include "VelmBase/ColorTable.h"

#include <concepts>
#include <cstdio>
#include <ostream>

// What a failed comparison shows of a colour, instead of the number that it converts to.

inline void PrintTo(const RGBColor& color, std::ostream* out) {
    char text[8];
    std::snprintf(text, sizeof text, "#%02X%02X%02X", static_cast<unsigned>(color.Red()),
                  static_cast<unsigned>(color.Green()), static_cast<unsigned>(color.Blue()));
    *out << text;
}

inline void PrintTo(const DXFColor& color, std::ostream* out) {
    *out << color.Index() << ' ';
    PrintTo(RGBColor(color), out);
}

inline void PrintTo(const HSVColor& color, std::ostream* out) {
    *out << "hue " << color.Hue() << " saturation " << color.Saturation() << " value " << color.Value();
}

template <std::derived_from<ColorTable> Table> void PrintTo(const Table& table, std::ostream* out) {
    *out << "default ";
    PrintTo(RGBColor(table.DefaultColor()), out);
    for (int i = 0; i < table.NumEntries(); ++i) {
        *out << ", " << table.EntryValue(i) << ' ';
        PrintTo(RGBColor(table.EntryColor(i)), out);
    }
}
