// SPDX-License-Identifier: MIT
#include "Framework/windows/win32/private/Modal.h"

#include "Framework/windows/win32/private/WindowLink.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace {

// Those of this thread that are open.
std::vector<HWND> SystemDialogs() {
    std::vector<HWND> dialogs;
    const WNDENUMPROC keep = [](HWND window, LPARAM data) -> BOOL {
        std::array<wchar_t, 16> name = {};
        GetClassNameW(window, name.data(), static_cast<int>(name.size()));
        if (std::wstring_view(name.data()) == L"#32770" && !WindowLink::Of(window))
            reinterpret_cast<std::vector<HWND>*>(data)->push_back(window);
        return TRUE;
    };
    EnumThreadWindows(GetCurrentThreadId(), keep, reinterpret_cast<LPARAM>(&dialogs));
    return dialogs;
}

} // namespace

HWND ShownOver(NativeWindow* parent) {
    HWND window = parent ? static_cast<HWND>(parent->Handle()) : nullptr;
    if (window) window = GetAncestor(window, GA_ROOT);
    // A control that waits for its host to place it, and a window that only receives messages, are nowhere.
    if (!window || !IsWindowVisible(window)) window = GetActiveWindow();
    return window && IsWindowVisible(window) ? window : nullptr;
}

OthersDisabled::OthersDisabled(HWND usable) : m_active(GetActiveWindow()), m_focus(GetFocus()) {
    struct Search {
        HWND usable;
        std::vector<HWND>& found;
    } search = {usable, m_disabled};
    const WNDENUMPROC disable = [](HWND window, LPARAM data) -> BOOL {
        const auto& of = *reinterpret_cast<const Search*>(data);
        if (window != of.usable && IsWindowVisible(window) && IsWindowEnabled(window))
            of.found.push_back(window);
        return TRUE;
    };
    EnumThreadWindows(GetCurrentThreadId(), disable, reinterpret_cast<LPARAM>(&search));
    for (const HWND window : m_disabled) EnableWindow(window, FALSE);
}

void OthersDisabled::Enable() {
    for (const HWND window : m_disabled)
        if (IsWindow(window)) EnableWindow(window, TRUE);
    m_disabled.clear();
    const HWND active = std::exchange(m_active, nullptr);
    if (!active || !IsWindow(active)) return;
    SetActiveWindow(active);
    // Windows that are no dialogs do not remember which of their controls had the keyboard.
    if (m_focus && IsChild(active, m_focus) && IsWindowEnabled(m_focus)) ::SetFocus(m_focus);
}

CancelledWith::CancelledWith(NativeWindow* parent) {
    const auto link = WindowLink::Of(parent ? static_cast<HWND>(parent->Handle()) : nullptr);
    if (!link) return;
    m_cancel = std::make_shared<std::function<void()>>([before = SystemDialogs()] {
        for (const HWND dialog : SystemDialogs())
            if (std::ranges::find(before, dialog) == before.end()) EndDialog(dialog, 0);
    });
    link->CallWhenGone(m_cancel);
}
