#include "Framework/windows/win32/private/Modal.h"

#include "Framework/windows/win32/private/WindowLink.h"

HWND ShownOver(NativeWindow* parent) {
    HWND window = parent ? static_cast<HWND>(parent->Handle()) : nullptr;
    if (window) window = GetAncestor(window, GA_ROOT);
    // A control that waits for its host to place it, and a window that only receives messages, are nowhere.
    if (!window || !IsWindowVisible(window)) window = GetActiveWindow();
    return window && IsWindowVisible(window) ? window : nullptr;
}

OthersDisabled::OthersDisabled(HWND usable) : m_active(GetActiveWindow()) {
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
    if (m_disabled.empty()) return;
    for (const HWND window : m_disabled)
        if (IsWindow(window)) EnableWindow(window, TRUE);
    m_disabled.clear();
    if (m_active && IsWindow(m_active)) SetActiveWindow(m_active);
}

void CloseSystemDialogsOver(HWND window) {
    const WNDENUMPROC close = [](HWND top, LPARAM data) -> BOOL {
        const auto under = reinterpret_cast<HWND>(data);
        HWND owner = GetWindow(top, GW_OWNER);
        while (owner && owner != under) owner = GetWindow(owner, GW_OWNER);
        wchar_t name[16] = L"";
        GetClassNameW(top, name, 16);
        // Those of the framework are ended by what runs them.
        if (owner && std::wstring_view(name) == L"#32770" && !WindowLink::Of(top)) EndDialog(top, IDCANCEL);
        return TRUE;
    };
    EnumThreadWindows(GetCurrentThreadId(), close, reinterpret_cast<LPARAM>(window));
}
