// SPDX-License-Identifier: MIT
#pragma once

#include "Framework/windows/Control.h"
#include "Framework/windows/WindowTypes.h"

/// A push button or a check box. Tells BN_CLICKED when the user presses it.
class FRAMEWORK_API CButton : public CControl {
public:
    /// A push button that draws itself by DrawItem(), outside of dialogs; see CWnd::Create(). Without a
    /// parent it is hidden until a host has placed its native handle.
    ErrorString Create(const CString& caption, CWnd* parent = nullptr, UINT id = 0);

    bool GetCheck() const;         ///< of a check box; false for a push button
    void SetCheck(bool isChecked); ///< of a check box

    /// Draws the button that Create() made, on item->hDC, which is good for the time of the call:
    /// CDC::Attach(). The base draws nothing. An exception that leaves it ends there.
    virtual void DrawItem(LPDRAWITEMSTRUCT item);

private:
    void OnDraw(DRAWITEMSTRUCT& item) final { DrawItem(&item); }
};
