// SPDX-License-Identifier: MIT
#pragma once

#include "Framework/windows/WindowTypes.h"
#include "Framework/windows/Wnd.h"

/// The system's dialog for a colour.
class FRAMEWORK_API CColorDialog {
public:
    /// With CC_FULLOPEN the part for the user's own colours is open, which on Linux it always is. CC_RGBINIT
    /// has no meaning here: the dialog always begins with `color`. The parent has to be there when it is
    /// shown.
    explicit CColorDialog(COLORREF color = 0, DWORD flags = 0, CWnd* parent = nullptr)
        : m_color(color), m_flags(flags), m_parent(parent) {}

    /// IDOK, or IDCANCEL, also when it cannot be shown.
    int DoModal();
    COLORREF GetColor() const { return m_color; } ///< what was chosen; before that, the first one

private:
    COLORREF m_color;
    DWORD m_flags;
    CWnd* m_parent;
};
