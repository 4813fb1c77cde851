// SPDX-License-Identifier: MIT
#include "tests/pictures/Camera.h"

#include "Framework/windows/DpiCor.h"
#include "Framework/windows/Wnd.h"
#include "VelmBase/WideString.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <windows.h>
// after it, whose types it uses
#include <gdiplus.h>

using namespace Gdiplus::DllExports;

namespace {

// How the library for pictures names the writer of PNG.
constexpr CLSID kPngEncoder = {0x557CF406, 0x1A04, 0x11D3, {0x9A, 0x73, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}};

// Visible windows of this thread over that one.
std::vector<HWND> WindowsOver(HWND window) {
    std::vector<HWND> over;
    for (HWND other = GetWindow(window, GW_HWNDPREV); other; other = GetWindow(other, GW_HWNDPREV))
        if (IsWindowVisible(other) && GetWindowThreadProcessId(other, nullptr) == GetCurrentThreadId())
            over.push_back(other);
    return over;
}

RECT Area(HWND window) {
    RECT area{};
    GetWindowRect(window, &area);
    return area;
}

// What waits is done. The system then shows what was drawn.
void Settle() {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
    GdiFlush();
}

} // namespace

struct Camera::Native {
    std::string prefix, suffix;
    ULONG_PTR pictures = 0;
    HWND backdrop = nullptr; // what is seen beside a dialog whose hints stand over its edge

    ~Native() {
        DestroyWindow(backdrop);
        Gdiplus::GdiplusShutdown(pictures);
    }

    void Take(HWND window, const std::string& name) const {
        Settle(); // hints come out of the queue
        RECT all = Area(window);
        for (const HWND other : WindowsOver(window)) {
            const RECT area = Area(other);
            UnionRect(&all, &all, &area);
        }
        UpdateWindow(backdrop);
        for (const HWND other : WindowsOver(window)) UpdateWindow(other);
        RedrawWindow(window, nullptr, nullptr, RDW_FRAME | RDW_INVALIDATE | RDW_ALLCHILDREN | RDW_UPDATENOW);
        Settle();

        const HDC screen = GetDC(nullptr), memory = CreateCompatibleDC(screen);
        const int width = all.right - all.left, height = all.bottom - all.top;
        const HBITMAP bitmap = CreateCompatibleBitmap(screen, width, height);
        const HGDIOBJ before = SelectObject(memory, bitmap);
        BitBlt(memory, 0, 0, width, height, screen, all.left, all.top, SRCCOPY);
        SelectObject(memory, before);
        Save(bitmap, FromUtf8(prefix + name + suffix + ".png"));
        DeleteObject(bitmap);
        DeleteDC(memory);
        ReleaseDC(nullptr, screen);
    }

    static void Save(HBITMAP bitmap, const std::wstring& path) {
        Gdiplus::GpBitmap* picture = nullptr;
        EXPECT_EQ(Gdiplus::Ok, GdipCreateBitmapFromHBITMAP(bitmap, nullptr, &picture));
        EXPECT_EQ(Gdiplus::Ok, GdipSaveImageToFile(picture, path.c_str(), &kPngEncoder, nullptr))
            << ToUtf8(path);
        GdipDisposeImage(picture);
    }
};

Camera::Camera(std::string prefix, std::string suffix, const std::string& theme)
    : m_native(new Native{std::move(prefix), std::move(suffix)}) {
    EXPECT_EQ("light", theme); // the look is that of the whole system
    const Gdiplus::GdiplusStartupInput input;
    EXPECT_EQ(Gdiplus::Ok, Gdiplus::GdiplusStartup(&m_native->pictures, &input, nullptr));
    m_native->backdrop = CreateWindowExW(
        WS_EX_NOACTIVATE, L"STATIC", L"", WS_POPUP | WS_VISIBLE | SS_GRAYRECT, 0, 0,
        GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN), nullptr, nullptr, nullptr, nullptr);
}

Camera::~Camera() = default;

void Camera::TakeDialog(const std::string& name) const { m_native->Take(GetActiveWindow(), name); }

void Camera::TakeControls(const std::string& name, const std::vector<CWnd*>& controls) const {
    const int width = DpiCor(260), height = DpiCor(30), gap = DpiCor(10);
    constexpr DWORD style = WS_POPUP | WS_CAPTION;
    RECT area{0, 0, width + 2 * gap, static_cast<LONG>(controls.size()) * (height + gap) + gap};
    AdjustWindowRect(&area, style, FALSE);
    const HWND window = CreateWindowExW(0, L"#32770", L"Controls", style, 100, 100, area.right - area.left,
                                        area.bottom - area.top, nullptr, nullptr, nullptr, nullptr);
    int top = gap;
    for (const CWnd* const control : controls) {
        const auto handle = static_cast<HWND>(control->NativeHandle());
        const LONG_PTR childStyle = GetWindowLongPtrW(handle, GWL_STYLE) & ~static_cast<LONG_PTR>(WS_POPUP);
        SetWindowLongPtrW(handle, GWL_STYLE, childStyle | WS_CHILD | WS_VISIBLE);
        SetParent(handle, window);
        SetWindowPos(handle, nullptr, gap, top, width, height, SWP_NOZORDER | SWP_SHOWWINDOW);
        top += height + gap;
    }
    ShowWindow(window, SW_SHOW);
    m_native->Take(window, name);
    DestroyWindow(window);
}
