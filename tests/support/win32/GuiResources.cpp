// SPDX-License-Identifier: MIT
#include "tests/support/win32/GuiResources.h"

#include <vector>

#include <windows.h>

namespace {

// Wine does not count them, but has room for so many and no more.
std::size_t NumGdiObjects() {
    constexpr std::size_t kMost = 0x10000;
    std::vector<HPEN> pens;
    pens.reserve(kMost);
    while (pens.size() < kMost) {
        const HPEN pen = CreatePen(PS_SOLID, 1, static_cast<COLORREF>(pens.size()));
        if (!pen) break;
        pens.push_back(pen);
    }
    for (const HPEN pen : pens) DeleteObject(pen);
    return kMost - pens.size();
}

BOOL CALLBACK CountWindow(HWND, LPARAM count) {
    ++*reinterpret_cast<std::size_t*>(count);
    return TRUE;
}

BOOL CALLBACK CountOwn(HWND window, LPARAM count) {
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    if (process != GetCurrentProcessId()) return TRUE;
    CountWindow(window, count);
    EnumChildWindows(window, &CountWindow, count);
    return TRUE;
}

std::size_t NumWindows() {
    std::size_t count = 0;
    const auto out = reinterpret_cast<LPARAM>(&count);
    EnumWindows(&CountOwn, out);
    for (HWND window = nullptr; (window = FindWindowExW(HWND_MESSAGE, window, nullptr, nullptr)) != nullptr;)
        CountOwn(window, out);
    return count;
}

} // namespace

GuiResources GuiResourcesInUse() {
    const std::size_t gdi = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS);
    const std::size_t user = GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS);
    return gdi != 0 || user != 0 ? GuiResources{gdi, user} : GuiResources{NumGdiObjects(), NumWindows()};
}
