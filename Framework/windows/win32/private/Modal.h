// SPDX-License-Identifier: MIT
#pragma once

#include "Framework/windows/private/NativeWindow.h"

#include <functional>
#include <memory>
#include <vector>
#include <windows.h>

/// The window that a dialog of that parent is shown over: the parent's outermost one, and otherwise the one
/// that the user is working in. Null where there is none.
HWND ShownOver(NativeWindow* parent);

/// While it lives, the user can use none of the windows that this thread has shown so far.
class OthersDisabled {
public:
    /// But for `usable`, which may be null.
    explicit OthersDisabled(HWND usable = nullptr);
    ~OthersDisabled() { Enable(); }
    OthersDisabled(const OthersDisabled&) = delete;
    OthersDisabled& operator=(const OthersDisabled&) = delete;

    /// To be called before the dialog is hidden, for the system would give the keyboard to another program.
    void Enable();

private:
    std::vector<HWND> m_disabled;
    HWND m_active; // before
    HWND m_focus;  // the same
};

/// While it lives, dialogs of the system that this thread opens are cancelled when the window goes that they
/// are shown for. It may be null.
class CancelledWith {
public:
    explicit CancelledWith(NativeWindow* parent);

private:
    std::shared_ptr<std::function<void()>> m_cancel; // the parent's for as long as this lives
};
