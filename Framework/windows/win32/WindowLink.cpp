// SPDX-License-Identifier: MIT
#include "Framework/windows/win32/private/WindowLink.h"

#include <commctrl.h>
#include <utility>

namespace {

constexpr UINT_PTR kLink =
    0x55444C31; // the number of our procedure at a window that is made for the framework
constexpr UINT_PTR kParent = 0x55444C32;    // and at one that has such windows in it
constexpr UINT_PTR kWakeTimer = 0x55444C33; // the system's controls have small numbers for theirs

// Of a window that is made for the framework, its link; of one that has such windows in it, how many.
constexpr wchar_t kLinkProperty[] = L"UtilityDLL.Link";
constexpr wchar_t kCountProperty[] = L"UtilityDLL.Controls";

// A number of its own on this machine, which no message of a host has.
UINT WakeMessage() {
    static const UINT message = RegisterWindowMessageW(L"UtilityDLL.Wake");
    return message;
}

// The control that told its parent something; null when it is not said.
HWND TellerOf(UINT message, LPARAM lParam) {
    switch (message) {
    case WM_COMMAND:
        return reinterpret_cast<HWND>(lParam);
    case WM_NOTIFY:
        return reinterpret_cast<const NMHDR*>(lParam)->hwndFrom;
    case WM_DRAWITEM:
        return reinterpret_cast<const DRAWITEMSTRUCT*>(lParam)->hwndItem;
    default:
        return nullptr;
    }
}

// Whether a window is in that one, or in one that is shown over it.
bool IsWithin(HWND window, HWND outer) {
    while (window && window != outer)
        window = GetParent(window); // of one that is no child: what it is shown over
    return window != nullptr;
}

void ForEachOfThread(const std::function<void(HWND)>& call) {
    const WNDENUMPROC forward = [](HWND window, LPARAM data) -> BOOL {
        (*reinterpret_cast<const std::function<void(HWND)>*>(data))(window);
        return TRUE;
    };
    EnumThreadWindows(GetCurrentThreadId(), forward, reinterpret_cast<LPARAM>(&call));
}

// Calls for that window, those in it, and those that are shown over it, until `call` says true.
bool AnyWithin(HWND outer, const std::function<bool(HWND)>& call) {
    struct Search {
        HWND outer;
        const std::function<bool(HWND)>& call;
        bool isFound;
    } search = {outer, call, call(outer)};
    const WNDENUMPROC look = [](HWND window, LPARAM data) -> BOOL {
        auto& of = *reinterpret_cast<Search*>(data);
        of.isFound = IsWithin(window, of.outer) && of.call(window);
        return !of.isFound;
    };
    const auto data = reinterpret_cast<LPARAM>(&search);
    if (!search.isFound) EnumChildWindows(outer, look, data);
    const HWND root = GetAncestor(outer, GA_ROOT);
    ForEachOfThread([&](HWND top) {
        if (search.isFound || top == root) return;
        look(top, data);
        if (!search.isFound) EnumChildWindows(top, look, data);
    });
    return search.isFound;
}

} // namespace

bool WakeWindow(HWND window, DWORD thread) {
    if (PostMessageW(window, WakeMessage(), 0, 0)) return true;
    // The thread's queue is full of other messages. Timers need no room in it, but only its own thread
    // may ask for one.
    return GetCurrentThreadId() == thread && SetTimer(window, kWakeTimer, 0, nullptr) != 0;
}

bool IsWake(HWND window, UINT message, WPARAM wParam) {
    const bool isTimer = message == WM_TIMER && wParam == kWakeTimer;
    if (isTimer) KillTimer(window, kWakeTimer);
    return isTimer || message == WakeMessage();
}

WindowLink::WindowLink(HWND window, NativeWindowOwner* owner) : m_window(window), m_owner(owner) {}

std::shared_ptr<WindowLink> WindowLink::Make(HWND window, NativeWindowOwner* owner) {
    auto link = std::make_shared<WindowLink>(window, owner);
    auto held = std::make_unique<std::shared_ptr<WindowLink>>(link);
    if (SetWindowSubclass(window, &Procedure, kLink, reinterpret_cast<DWORD_PTR>(held.get()))) {
        SetPropW(window, kLinkProperty, link.get());
        (void)held.release(); // the window's from now on
    }
    link->FollowParent();
    return link;
}

std::shared_ptr<WindowLink> WindowLink::Of(HWND window) {
    auto* const link = window ? static_cast<WindowLink*>(GetPropW(window, kLinkProperty)) : nullptr;
    return link ? link->shared_from_this() : nullptr;
}

LRESULT CALLBACK WindowLink::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                       DWORD_PTR data) {
    auto* const held = reinterpret_cast<std::shared_ptr<WindowLink>*>(data);
    const std::shared_ptr<WindowLink> link = *held; // the window may go by what is done here
    if (message != WM_NCDESTROY) return link->Receive(window, message, wParam, lParam);
    RemoveWindowSubclass(window, &Procedure, kLink);
    RemovePropW(window, kLinkProperty);
    delete held;
    if (link->m_parent) CountControls(std::exchange(link->m_parent, nullptr), false);
    if (std::exchange(link->m_isLeft, false)) --s_left;
    if (NativeWindowOwner* const owner = std::exchange(link->m_owner, nullptr))
        owner->OnDestroyed(); // before the handle goes: other threads may be using it
    const LRESULT result = DefSubclassProc(window, message, wParam, lParam);
    link->m_window = nullptr;
    link->CallThoseWhoWait();
    link->m_onMessage = nullptr;
    link->m_onTold = nullptr;
    link->m_needed.clear();
    return result;
}

LRESULT WindowLink::Receive(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    FollowParent();
    if (IsWake(window, message, wParam)) {
        if (m_isLeft)
            DestroyIfLeft();
        else
            ForOwner([](NativeWindowOwner& owner) { owner.OnWake(); });
        return 0;
    }
    if (m_onMessage) {
        const Answer answer = m_onMessage; // which goes with the window
        if (const std::optional<LRESULT> result = answer(message, wParam, lParam)) return *result;
    }
    return DefSubclassProc(window, message, wParam, lParam);
}

void WindowLink::FollowParent() {
    HWND parent = GetAncestor(m_window, GA_PARENT);
    if (parent == m_parent) return;
    const bool isInWindow = parent && parent != GetDesktopWindow() &&
                            (GetWindowLongW(m_window, GWL_STYLE) & WS_CHILD) != 0 &&
                            GetWindowThreadProcessId(parent, nullptr) == m_thread;
    if (!isInWindow) parent = nullptr;
    if (parent == m_parent) return;
    if (m_parent && IsWindow(m_parent)) CountControls(m_parent, false);
    m_parent = parent;
    if (m_parent) CountControls(m_parent, true);
}

void WindowLink::CountControls(HWND parent, bool isMore) {
    const auto before = reinterpret_cast<std::uintptr_t>(GetPropW(parent, kCountProperty));
    const std::uintptr_t count = isMore ? before + 1 : before - 1;
    if (count == 0) {
        RemoveWindowSubclass(parent, &ParentProcedure, kParent);
        RemovePropW(parent, kCountProperty);
        return;
    }
    if (before == 0) SetWindowSubclass(parent, &ParentProcedure, kParent, 0);
    SetPropW(parent, kCountProperty, reinterpret_cast<HANDLE>(count)); // NOLINT(performance-no-int-to-ptr)
}

LRESULT CALLBACK WindowLink::ParentProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                             UINT_PTR, DWORD_PTR) {
    if (message == WM_NCDESTROY) {
        RemoveWindowSubclass(window, &ParentProcedure, kParent);
        RemovePropW(window, kCountProperty);
    }
    if (const std::shared_ptr<WindowLink> link = Of(TellerOf(message, lParam)); link && link->m_onTold) {
        const Answer answer = link->m_onTold; // which goes with the control
        if (const std::optional<LRESULT> result = answer(message, wParam, lParam)) return *result;
    }
    return DefSubclassProc(window, message, wParam, lParam);
}

void WindowLink::Leave() {
    m_owner = nullptr;
    if (!m_window) return;
    CallThoseWhoWait();
    if (!IsAtWork()) {
        DestroyWindow(m_window);
        return;
    }
    m_isLeft = true;
    ++s_left;
    ShowWindow(m_window, SW_HIDE);
    PostMessageW(m_window, WM_NULL, 0, 0); // so that a dialog's loop looks
}

void WindowLink::CallThoseWhoWait() {
    for (const auto& waiting : std::exchange(m_whenGone, {}))
        if (const auto call = waiting.lock()) (*call)();
}

void WindowLink::DestroyIfLeft() {
    if (m_window && m_isLeft && !IsAtWork()) DestroyWindow(m_window);
}

bool WindowLink::IsAtWork() const {
    return AnyWithin(m_window, [](HWND window) {
        const std::shared_ptr<WindowLink> link = Of(window);
        return link && link->m_depth > 0;
    });
}

// Out of the event loop: what called for the owner is still using its window.
void WindowLink::WakeLeft() const {
    const auto wake = [](HWND window) {
        const std::shared_ptr<WindowLink> link = Of(window);
        if (link && link->m_isLeft) link->Wake();
        return false;
    };
    if (m_window) wake(m_window);
    ForEachOfThread([&](HWND top) { AnyWithin(top, wake); });
}
