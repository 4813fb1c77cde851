// SPDX-License-Identifier: MIT
#pragma once

#include "Framework/windows/Button.h"

/// A push button of a dialog (COLOR_WELL) that shows a colour beside its caption, black at first, and has the
/// user choose another by a click. The colour stays when the window goes; a window has it from the next
/// SetColor() on.
class FRAMEWORK_API CColorWell : public CButton {
public:
    /// The colour, whether there is a window or not.
    /// @{
    COLORREF GetColor() const { return m_color; }
    void SetColor(COLORREF color);
    /// @}

    const AFX_MSGMAP* GetMessageMap() const override { return GetThisMessageMap(); }
    static const AFX_MSGMAP* GetThisMessageMap(); ///< for maps of derived classes

private:
    void OnClicked();

    COLORREF m_color = 0;
};
