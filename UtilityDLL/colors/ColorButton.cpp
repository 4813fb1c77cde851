// SPDX-License-Identifier: MIT
#include "UtilityDLL/colors/ColorButton.h"

#include "Framework/device/DC.h"
#include "Framework/windows/ColorDialog.h"

#include <memory>
#include <string>

ColorButton::ColorButton() = default;
ColorButton::~ColorButton() = default;

void ColorButton::DrawItem(LPDRAWITEMSTRUCT item) {
    if (!item || (item->itemAction & ODA_DRAWENTIRE) == 0) return;
    const COLORREF inverse = ~m_color & 0xFFFFFF;
    CDC dc;
    dc.Attach(item->hDC);
    const RECT& face = item->rcItem;
    dc.FillRect(face, CBrush(m_color));
    dc.FrameRect(face, CBrush(inverse));
    dc.SetTextColor(inverse);
    dc.SetBkColor(m_color);
    const std::wstring caption = GetWindowTextW().String();
    const CSize size = dc.GetTextExtent(caption);
    dc.TextOutW(static_cast<int>(face.left) + static_cast<int>(face.right - face.left) / 2 - size.cx / 2,
                static_cast<int>(face.top) + static_cast<int>(face.bottom - face.top) / 2 - size.cy / 2,
                caption);
    dc.Detach();
}

const AFX_MSGMAP* ColorButton::GetThisMessageMap() {
    static const AFX_MSGMAP_ENTRY entries[] = {
        {WM_REFLECTED_COMMAND, BN_CLICKED, 0, Handler(&ColorButton::OnClicked)}, {}};
    static const AFX_MSGMAP map = {&CButton::GetThisMessageMap, entries};
    return &map;
}

void ColorButton::OnClicked() {
    const std::weak_ptr<MessageTarget> self = Target(); // which the host may delete while the dialog is open
    CColorDialog dialog(m_color, CC_FULLOPEN | CC_RGBINIT, this);
    if (dialog.DoModal() != IDOK || self.expired()) return;
    m_color = dialog.GetColor();
    Invalidate();
}
