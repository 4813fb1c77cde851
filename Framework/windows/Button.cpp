// SPDX-License-Identifier: MIT
#include "Framework/windows/Button.h"

#include "Framework/windows/private/NativeControls.h"

ErrorString CButton::Create(const CString& caption, CWnd* parent, UINT id) {
    const auto make = [&](NativeToolkit& toolkit, NativeWindowOwner& owner, NativeWindow* over,
                          std::unique_ptr<NativeWindow>& button) {
        return toolkit.MakeDrawnButton(owner, caption.String(), over, button);
    };
    return CreateOn(parent, id, make);
}

bool CButton::GetCheck() const {
    const auto* const button = dynamic_cast<NativeButton*>(Window());
    return button && button->IsChecked();
}

void CButton::SetCheck(bool isChecked) {
    if (auto* const button = dynamic_cast<NativeButton*>(Window())) button->SetChecked(isChecked);
}

void CButton::DrawItem(LPDRAWITEMSTRUCT) {}
