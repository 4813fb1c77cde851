// SPDX-License-Identifier: MIT
#include "Framework/windows/ComboBox.h"

#include "Framework/windows/private/NativeControls.h"

ErrorString CComboBox::Create(DWORD style, CWnd* parent, UINT id) {
    const auto make = [&](NativeToolkit& toolkit, NativeWindowOwner& owner, NativeWindow* over,
                          std::unique_ptr<NativeWindow>& box) {
        return toolkit.MakeComboBox(owner, (style & CBS_SORT) != 0, over, box);
    };
    return CreateOn(parent, id, make);
}

int CComboBox::AddString(const CString& text) {
    auto* const box = dynamic_cast<NativeComboBox*>(Window());
    return box ? box->Add(text.String()) : -1;
}

int CComboBox::GetCount() const {
    const auto* const box = dynamic_cast<NativeComboBox*>(Window());
    return box ? box->Count() : 0;
}

CString CComboBox::GetLBText(int position) const {
    const auto* const box = dynamic_cast<NativeComboBox*>(Window());
    return box && position >= 0 && position < box->Count() ? box->TextAt(position) : std::wstring();
}

int CComboBox::GetCurSel() const {
    const auto* const box = dynamic_cast<NativeComboBox*>(Window());
    return box ? box->Selected() : -1;
}

void CComboBox::SetCurSel(int position) {
    auto* const box = dynamic_cast<NativeComboBox*>(Window());
    if (box && position >= -1 && position < box->Count()) box->Select(position);
}
