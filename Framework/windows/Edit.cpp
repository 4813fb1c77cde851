// SPDX-License-Identifier: MIT
#include "Framework/windows/Edit.h"

#include "Framework/windows/private/NativeControls.h"

void CEdit::FocusAndSelect() {
    if (auto* const edit = dynamic_cast<NativeEdit*>(Window())) edit->FocusAndSelect();
}

void CEdit::ShowBalloonTip(const CString& text) {
    if (auto* const edit = dynamic_cast<NativeEdit*>(Window())) edit->ShowHint(text.String());
}
