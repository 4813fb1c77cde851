// SPDX-License-Identifier: MIT
#include "Framework/windows/ColorDialog.h"

#include "Framework/windows/private/NativeControls.h"

int CColorDialog::DoModal() {
    NativeToolkit* toolkit = nullptr;
    if (!OpenToolkit(toolkit)) return IDCANCEL;
    NativeWindow* const parent = m_parent ? m_parent->Window() : nullptr;
    return toolkit->AskForColor(m_color, (m_flags & CC_FULLOPEN) != 0, parent) ? IDOK : IDCANCEL;
}
