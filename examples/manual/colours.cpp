// SPDX-License-Identifier: MIT
// A colour in three forms, and the colours of depths: a table, and what becomes of it
// in a drawing.
#include <UtilityDLL/colors/DXFColorTable.h>
#include <UtilityDLL/colors/HSVColor.h>

#include <iostream>

int main() {
    const RGBColor water(27, 117, 176);
    const HSVColor hsv(water);
    std::wcout << L"colour reference " << static_cast<unsigned long>(water) << L", hue "
               << hsv.Hue() << L", DXF index " << DXFColor(water).Index() << L", grey "
               << water.GrayScale().Red() << L'\n';

    DXFColorTable table;
    table.SetDefaultColor(RGBColor(206, 208, 158)); // what dries: below the first entry
    table.AddEntry(0, RGBColor(152, 179, 226));
    table.AddEntry(5, RGBColor(219, 237, 246));
    table.AddEntry(10, RGBColor(245, 253, 254));
    table.MakeDXFTable(); // only now are there indices

    for (const double depth : {-0.5, 0.0, 4.9, 5.0, 40.0})
        std::wcout << depth << L" m: " << table[depth].Index() << L'\n';

    if (!table.FileSave(L"depths.col")) return 1; // whole or not at all
    DXFColorTable read;
    if (!read.FileOpen(L"depths.col")) return 1;
    std::wcout << (read == table ? L"the same table\n" : L"another table\n");
}
