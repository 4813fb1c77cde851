#pragma once

#include "Framework/windows/Control.h"
#include "Framework/windows/WindowTypes.h"

/// A push button or a check box.
class FRAMEWORK_API CButton : public CControl {
public:
    /// A push button that draws itself by DrawItem(), outside of dialogs; see CWnd::Create(). Without a
    /// parent it is hidden until a host has placed its native handle.
    ErrorString Create(const CString& caption, CWnd* parent = nullptr, UINT id = 0);

    bool GetCheck() const;
    void SetCheck(bool isChecked);

    /// Draws the button. The base draws nothing. An exception that leaves it ends there.
    virtual void DrawItem(LPDRAWITEMSTRUCT item);

private:
    void OnDraw(DRAWITEMSTRUCT& item) final { DrawItem(&item); }
};
