#include "Framework/windows/ColorWell.h"

#include "Framework/windows/ColorDialog.h"
#include "Framework/windows/private/NativeControls.h"

void CColorWell::SetColor(COLORREF color) {
    m_color = color;
    if (auto* const button = dynamic_cast<NativeButton*>(Window())) button->SetSwatch(color);
}

const AFX_MSGMAP* CColorWell::GetThisMessageMap() {
    static const AFX_MSGMAP_ENTRY entries[] = {
        {WM_REFLECTED_COMMAND, BN_CLICKED, 0, Handler(&CColorWell::OnClicked)}, {}};
    static const AFX_MSGMAP map = {&CButton::GetThisMessageMap, entries};
    return &map;
}

void CColorWell::OnClicked() {
    CColorDialog dialog(m_color, CC_FULLOPEN, this);
    if (dialog.DoModal() == IDOK) SetColor(dialog.GetColor());
}
