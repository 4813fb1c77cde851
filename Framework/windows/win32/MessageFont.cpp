// SPDX-License-Identifier: MIT
#include "Framework/windows/win32/private/MessageFont.h"

SharedFont MakeMessageFont() {
    NONCLIENTMETRICSW metrics = {};
    metrics.cbSize = sizeof metrics;
    if (!SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0)) return nullptr;
    return {CreateFontIndirectW(&metrics.lfMessageFont), [](HFONT font) {
                if (font) ::DeleteObject(font);
            }};
}

SIZE ExtentOf(const wchar_t* text, int length, HFONT font) {
    SIZE extent = {};
    const HDC dc = GetDC(nullptr);
    const HGDIOBJ before = font ? SelectObject(dc, font) : nullptr;
    GetTextExtentPoint32W(dc, text, length, &extent);
    if (before) SelectObject(dc, before);
    ReleaseDC(nullptr, dc);
    return extent;
}
