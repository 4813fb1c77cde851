// SPDX-License-Identifier: MIT
#pragma once

#include "Framework/windows/Button.h"
#include "UtilityDLL/Export.h"

/// A push button that shows a colour: its face has the colour, its frame and caption the inverse one. A click
/// lets the user choose another.
///
/// A host makes it by Create() and places its NativeHandle() into its own layout. To hear of a choice it
/// gives a class of its own an entry for the button's BN_CLICKED that calls OnClicked() and then looks at
/// GetColor(); on Linux it may connect to clicked() of the handle, a QAbstractButton, as well, and on Windows
/// the window that the handle is in gets WM_COMMAND: these come when the dialog is closed. All of them come
/// after Cancel, too.
///
/// The caption is drawn as it is. "&" still marks its letter for the keyboard, but is drawn as well, and so
/// is better given to a label that names the button. A disabled button looks the same.
class UTILITYDLL_API ColorButton : public CButton {
public:
    ColorButton(); ///< black, without a window
    ~ColorButton() override;

    /// The colour reference, black at first: red in bits 0 to 7, green 8 to 15, blue 16 to 23. Bits 24 to 31
    /// come back as they were given, and do not show; those of a colour that the user chose are 0.
    unsigned long GetColor() const { return m_color; }

    /// Takes 32 bits. The button is drawn in that colour the next time; Invalidate() has it drawn now.
    void SetColor(unsigned long color) { m_color = static_cast<COLORREF>(color); }

    /// What a click does, also of a button that is disabled or has no window: the colour dialog opens, fully
    /// expanded. On OK the chosen colour is taken and the button drawn anew; nothing changes on Cancel, and
    /// where the dialog cannot be shown. The host may delete the button while the dialog is open.
    void ForceColorChange() { OnClicked(); }

    /// Draws the button when all of it is asked for. For the focus and the selection
    /// alone, and for null, nothing is drawn.
    void DrawItem(LPDRAWITEMSTRUCT item) override;

    const AFX_MSGMAP* GetMessageMap() const override { return GetThisMessageMap(); }
    static const AFX_MSGMAP* GetThisMessageMap(); ///< for maps of derived classes

protected:
    void OnClicked(); ///< has the user choose

private:
    COLORREF m_color = 0;
};
