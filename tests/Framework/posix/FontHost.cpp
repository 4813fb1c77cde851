// SPDX-License-Identifier: MIT
// Prints what a text takes in a font, or that it cannot be measured: for DeviceModuleTest, which gives it a
// font module, another, or none.

#include "Framework/device/DC.h"

#include <cstdio>

int main() {
    CDC dc;
    dc.CreateDCW(L"DISPLAY", nullptr, nullptr);
    CFont font;
    font.CreateFontW(-2048, 0, 0, 0, FW_NORMAL, 0, 0, 0, 0, 0, 0, 0, 0, L"Liberation Sans");
    CDC::SelectGdiObject(dc.m_hDC, font.m_hObject);
    SIZE extent = {};
    if (GetTextExtentPoint32W(dc.m_hDC, L"n", 1, &extent))
        std::printf("%d\n", extent.cx);
    else
        std::printf("%u bytes of metrics\n", dc.GetOutlineTextMetricsW(0, nullptr));
}
