#include "Framework/windows/private/NativeWindow.h"

#include <windows.h>

namespace {

constexpr wchar_t kClassName[] = L"UtilityDLL.Window";
constexpr UINT_PTR kWakeTimer = 1;

// A number of its own on this machine, which no message of a host has.
UINT WakeMessage() {
    static const UINT message = RegisterWindowMessageW(L"UtilityDLL.Wake");
    return message;
}

bool IsForHosts(UINT message) { return message >= WM_USER && message < 0xC000; }

class Win32Window final : public NativeWindow {
public:
    Win32Window(NativeWindowOwner& owner, HINSTANCE library)
        : m_owner(owner), m_thread(GetCurrentThreadId()) {
        m_handle = CreateWindowExW(0, kClassName, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, library, this);
    }

    ~Win32Window() override {
        if (!m_handle) return;
        const HWND handle = m_handle;
        SetWindowLongPtrW(handle, GWLP_USERDATA, 0);
        DestroyWindow(handle);
    }

    // It works for the window that it was made for, from the beginning to the end.
    void SetOwner(NativeWindowOwner&) override {}
    void* Handle() const override { return m_handle; }

    std::wstring Text() const override {
        std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(m_handle)), L' ');
        text.resize(GetWindowTextW(m_handle, text.data(), static_cast<int>(text.size()) + 1));
        return text;
    }
    void SetText(const std::wstring& text) override { SetWindowTextW(m_handle, text.c_str()); }
    bool IsEnabled() const override { return IsWindowEnabled(m_handle) != 0; }
    void Enable(bool enable) override { EnableWindow(m_handle, enable); }
    void Focus() override { ::SetFocus(m_handle); }
    void Invalidate() override { InvalidateRect(m_handle, nullptr, TRUE); }

    bool Wake() override {
        if (PostMessageW(m_handle, WakeMessage(), 0, 0)) return true;
        // The thread's queue is full of other messages. Timers need no room in it, but only its own thread
        // may ask for one.
        return GetCurrentThreadId() == m_thread && SetTimer(m_handle, kWakeTimer, 0, nullptr) != 0;
    }

    static LRESULT CALLBACK Procedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam);

private:
    LRESULT Answer(UINT message, WPARAM wParam, LPARAM lParam);

    NativeWindowOwner& m_owner;
    const DWORD m_thread;
    HWND m_handle = nullptr; // also when others have destroyed it
};

LRESULT CALLBACK Win32Window::Procedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NCCREATE) {
        const auto* const creation = reinterpret_cast<const CREATESTRUCTW*>(lParam);
        SetWindowLongPtrW(handle, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(creation->lpCreateParams));
    }
    auto* const window = reinterpret_cast<Win32Window*>(GetWindowLongPtrW(handle, GWLP_USERDATA));
    const bool isOwned = window && window->m_handle == handle; // not while it is made, nor when it is left
    return isOwned ? window->Answer(message, wParam, lParam)
                   : DefWindowProcW(handle, message, wParam, lParam);
}

// The owner may delete this window, of which nothing is used afterwards.
LRESULT Win32Window::Answer(UINT message, WPARAM wParam, LPARAM lParam) {
    if (IsForHosts(message)) return m_owner.OnMessage(message, wParam, lParam);
    const bool isTimer = message == WM_TIMER && wParam == kWakeTimer;
    if (isTimer) KillTimer(m_handle, kWakeTimer);
    if (isTimer || message == WakeMessage()) {
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

// The library itself, to which the class of its windows belongs. Null when the system refuses the class.
HINSTANCE LibraryWithClass() {
    HMODULE library = nullptr;
    if (!GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS |
                                GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                            reinterpret_cast<const wchar_t*>(&Win32Window::Procedure), &library))
        return nullptr;
    WNDCLASSW windowClass = {};
    windowClass.lpfnWndProc = &Win32Window::Procedure;
    windowClass.hInstance = library;
    windowClass.lpszClassName = kClassName;
    const bool isThere = RegisterClassW(&windowClass) != 0 || GetLastError() == ERROR_CLASS_ALREADY_EXISTS;
    return isThere ? library : nullptr;
}

ErrorString SystemRefuses() {
    return ErrorString(L"Windows cannot be made: the system refuses, error ") << GetLastError();
}

} // namespace

ErrorString MakeNativeWindow(NativeWindowOwner& owner, std::unique_ptr<NativeWindow>& window) {
    const HINSTANCE library = LibraryWithClass();
    if (!library) return SystemRefuses();
    auto made = std::make_unique<Win32Window>(owner, library);
    if (!made->Handle()) return SystemRefuses();
    window = std::move(made);
    return {};
}
