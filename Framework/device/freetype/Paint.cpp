// SPDX-License-Identifier: MIT
#include "Framework/device/freetype/private/DeviceContext.h"

namespace {

COLORREF SetColor(HDC dc, COLORREF DeviceContext::*which, COLORREF color) {
    COLORREF old = CLR_INVALID;
    DeviceContexts().Access(dc, [&](DeviceContext& context) {
        old = context.*which;
        context.*which = color & 0xFFFFFF;
    });
    return old;
}

bool IsEmpty(const RECT& rectangle) {
    return rectangle.right <= rectangle.left || rectangle.bottom <= rectangle.top;
}

bool ColorOf(HBRUSH brush, COLORREF& color) {
    bool isBrush = false;
    DeviceObjects().Access(brush, [&](const DeviceObject& object) {
        isBrush = object.kind == ObjectKind::BRUSH;
        color = object.color;
    });
    return isBrush;
}

} // namespace

// Only the thread that the target is opened in draws there, and so it is used without the table's lock.
PaintTarget* TargetOf(HDC dc) {
    PaintTarget* target = nullptr;
    DeviceContexts().Access(dc, [&](const DeviceContext& context) { target = context.target; });
    return target;
}

HDC OpenPaintTarget(PaintTarget& target) {
    const HDC dc = CreateDCW(L"DISPLAY", nullptr, nullptr, nullptr);
    DeviceContexts().Access(dc, [&](DeviceContext& context) { context.target = &target; });
    return dc;
}

HBRUSH CreateSolidBrush(COLORREF color) {
    DeviceObject object;
    object.kind = ObjectKind::BRUSH;
    object.color = color & 0xFFFFFF;
    return static_cast<HBRUSH>(DeviceObjects().Add(std::move(object)));
}

int FillRect(HDC dc, const RECT* rectangle, HBRUSH brush) {
    PaintTarget* const target = TargetOf(dc);
    COLORREF color = 0;
    if (!target || !rectangle || !ColorOf(brush, color)) return 0;
    if (!IsEmpty(*rectangle)) target->Fill(*rectangle, color);
    return 1;
}

int FrameRect(HDC dc, const RECT* rectangle, HBRUSH brush) {
    PaintTarget* const target = TargetOf(dc);
    COLORREF color = 0;
    if (!target || !rectangle || !ColorOf(brush, color)) return 0;
    const RECT& all = *rectangle;
    if (IsEmpty(all)) return 0;
    target->Fill({all.left, all.top, all.right, all.top + 1}, color);
    target->Fill({all.left, all.bottom - 1, all.right, all.bottom}, color);
    target->Fill({all.left, all.top, all.left + 1, all.bottom}, color);
    target->Fill({all.right - 1, all.top, all.right, all.bottom}, color);
    return 1;
}

COLORREF SetTextColor(HDC dc, COLORREF color) { return SetColor(dc, &DeviceContext::textColor, color); }

COLORREF SetBkColor(HDC dc, COLORREF color) { return SetColor(dc, &DeviceContext::backgroundColor, color); }

BOOL TextOutW(HDC dc, int x, int y, const wchar_t* text, int length) {
    PaintTarget* const target = TargetOf(dc);
    if (!target || !text || length < 0) return 0;
    COLORREF color = 0;
    COLORREF background = 0;
    DeviceContexts().Access(dc, [&](const DeviceContext& context) {
        color = context.textColor;
        background = context.backgroundColor;
    });
    target->Write(x, y, {text, static_cast<std::size_t>(length)}, color, background);
    return 1;
}
