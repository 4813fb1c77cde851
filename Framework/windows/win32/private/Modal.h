#pragma once

#include "Framework/windows/private/NativeWindow.h"

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
};

/// Closes the system's own dialogs, and message boxes, that are open over a window.
void CloseSystemDialogsOver(HWND window);
