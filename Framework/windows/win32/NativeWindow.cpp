// SPDX-License-Identifier: MIT
#include "Framework/windows/private/NativeWindow.h"

#include "Framework/windows/win32/private/Dialog.h"
#include "Framework/windows/win32/private/TodaysLook.h"
#include "Framework/windows/win32/private/Win32Window.h"
#include "VelmBase/UntilUnloaded.h"

#include <windows.h>

namespace {

constexpr wchar_t kClassName[] = L"UtilityDLL.Window";

bool IsForHosts(UINT message) { return message >= WM_USER && message < 0xC000; }

class MessageWindow final : public NativeWindow {
public:
    MessageWindow(NativeWindowOwner& owner, HINSTANCE library)
        : m_owner(owner), m_thread(GetCurrentThreadId()) {
        m_handle = CreateWindowExW(0, kClassName, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, library, this);
    }

    ~MessageWindow() override {
        if (!m_handle) return;
        const HWND handle = m_handle;
        SetWindowLongPtrW(handle, GWLP_USERDATA, 0);
        DestroyWindow(handle);
    }

    // It works for the window that it was made for, from the beginning to the end.
    void SetOwner(NativeWindowOwner&) override {}
    void* Handle() const override { return m_handle; }

    std::wstring Text() const override { return TextOfWindow(m_handle); }
    void SetText(const std::wstring& text) override { SetWindowTextW(m_handle, text.c_str()); }
    bool IsEnabled() const override { return IsWindowEnabled(m_handle) != 0; }
    void Enable(bool enable) override { EnableWindow(m_handle, enable); }
    void Focus() override { ::SetFocus(m_handle); }
    void Invalidate() override { InvalidateRect(m_handle, nullptr, TRUE); }

    bool Wake() override { return WakeWindow(m_handle, m_thread); }

    static LRESULT CALLBACK Procedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam);

private:
    LRESULT Answer(UINT message, WPARAM wParam, LPARAM lParam);

    NativeWindowOwner& m_owner;
    const DWORD m_thread;
    HWND m_handle = nullptr; // also when others have destroyed it
};

LRESULT CALLBACK MessageWindow::Procedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NCCREATE) {
        const auto* const creation = reinterpret_cast<const CREATESTRUCTW*>(lParam);
        SetWindowLongPtrW(handle, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(creation->lpCreateParams));
    }
    auto* const window = reinterpret_cast<MessageWindow*>(GetWindowLongPtrW(handle, GWLP_USERDATA));
    const bool isOwned = window && window->m_handle == handle; // not while it is made, nor when it is left
    return isOwned ? window->Answer(message, wParam, lParam)
                   : DefWindowProcW(handle, message, wParam, lParam);
}

// The owner may delete this window, of which nothing is used afterwards.
LRESULT MessageWindow::Answer(UINT message, WPARAM wParam, LPARAM lParam) {
    if (IsForHosts(message)) return m_owner.OnMessage(message, wParam, lParam);
    if (IsWake(m_handle, message, wParam)) {
        m_owner.OnWake();
        return 0;
    }
    const HWND handle = m_handle;
    if (message == WM_NCDESTROY) {
        SetWindowLongPtrW(handle, GWLP_USERDATA, 0);
        m_owner.OnDestroyed(); // before the handle goes: other threads may be using it
        m_handle = nullptr;
    }
    return DefWindowProcW(handle, message, wParam, lParam);
}

// Takes the class of the windows back: the system would keep it, and call into a library that is gone.
struct ClassAtEnd {
    HINSTANCE library = nullptr;
    ~ClassAtEnd() { UnregisterClassW(kClassName, library); }
};

// The library itself, to which the class of its windows belongs. Null when the system refuses the class.
HINSTANCE LibraryWithClass() {
    static UntilUnloaded<ClassAtEnd> atEnd;
    WNDCLASSW windowClass = {};
    windowClass.lpfnWndProc = &MessageWindow::Procedure;
    windowClass.hInstance = ThisLibrary();
    windowClass.lpszClassName = kClassName;
    atEnd->library = windowClass.hInstance;
    const bool isThere = RegisterClassW(&windowClass) != 0 || GetLastError() == ERROR_CLASS_ALREADY_EXISTS;
    return isThere ? windowClass.hInstance : nullptr;
}

} // namespace

ErrorString MakeNativeWindow(NativeWindowOwner& owner, std::unique_ptr<NativeWindow>& window) {
    const HINSTANCE library = LibraryWithClass();
    if (!library) return SystemRefuses();
    auto made = std::make_unique<MessageWindow>(owner, library);
    if (!made->Handle()) return SystemRefuses();
    window = std::move(made);
    return {};
}
