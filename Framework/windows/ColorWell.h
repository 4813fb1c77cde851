#pragma once

#include "Framework/windows/Button.h"

/// A push button that shows a colour beside its caption, and has the user choose another by a click.
class FRAMEWORK_API CColorWell : public CButton {
public:
    COLORREF GetColor() const { return m_color; }
    void SetColor(COLORREF color);

    const AFX_MSGMAP* GetMessageMap() const override { return GetThisMessageMap(); }
    static const AFX_MSGMAP* GetThisMessageMap();

private:
    void OnClicked();

    COLORREF m_color = 0;
};
