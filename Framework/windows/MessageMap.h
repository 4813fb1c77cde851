// SPDX-License-Identifier: MIT
#pragma once

#include "Framework/windows/Messages.h"

class CWnd;

/// What a window does about what its controls tell: see CWnd::OnCmdMsg().
struct AFX_MSGMAP_ENTRY {
    /// WM_COMMAND for what controls tell their parent, WM_REFLECTED_COMMAND for what a control is told of
    /// itself first. An entry of 0 ends a map.
    UINT message;
    UINT code;               ///< what happened (BN_CLICKED)
    UINT id;                 ///< of the control; 0 for what is reflected
    void (CWnd::*handler)(); ///< what is called
};

/// A class's entries, asked in their order, and how its base class's are found; null for CWnd, which has
/// none.
struct AFX_MSGMAP {
    const AFX_MSGMAP* (*base)();     ///< gives the base class's map
    const AFX_MSGMAP_ENTRY* entries; ///< up to one of 0
};

/// The message of entries for what a control is told of itself.
inline constexpr UINT WM_REFLECTED_COMMAND = 0xBC00 + 0x0111;

/// A handler of a class as an entry holds it.
template <typename Window> constexpr auto Handler(void (Window::*handler)()) {
    return static_cast<void (CWnd::*)()>(handler);
}
