// SPDX-License-Identifier: MIT
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
    const std::shared_ptr<MessageTarget> self = Target(); // which may go while the dialog is open
    CColorDialog dialog(m_color, CC_FULLOPEN, this);
    if (dialog.DoModal() == IDOK && Of(self)) SetColor(dialog.GetColor());
}
