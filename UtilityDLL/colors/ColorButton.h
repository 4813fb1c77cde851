#pragma once

#include "Framework/windows/Button.h"
#include "UtilityDLL/Export.h"

/// A push button that shows a colour: its face has the colour, its frame and caption the inverse one. A click
/// lets the user choose another.
///
/// A host makes it by Create() and places its NativeHandle() into its own layout.
class UTILITYDLL_API ColorButton : public CButton {
public:
    ColorButton();
    ~ColorButton() override;

    /// The colour reference, black at first: red in bits 0 to 7, green 8 to 15, blue 16 to 23.
    unsigned long GetColor() const { return m_color; }

    /// The button is drawn in that colour the next time; Invalidate() has it drawn now.
    void SetColor(unsigned long color) { m_color = static_cast<COLORREF>(color); }

    /// What a click does: the colour dialog opens, fully expanded. On OK the chosen colour is taken and the
    /// button drawn anew, on Cancel nothing changes.
    void ForceColorChange() { OnClicked(); }

    /// Draws the button when all of it is asked for. For the focus and the selection alone nothing is drawn.
    void DrawItem(LPDRAWITEMSTRUCT item) override;

    const AFX_MSGMAP* GetMessageMap() const override { return GetThisMessageMap(); }
    static const AFX_MSGMAP* GetThisMessageMap();

protected:
    void OnClicked();

private:
    COLORREF m_color = 0;
};
