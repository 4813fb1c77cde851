// SPDX-License-Identifier: MIT
#pragma once

#include "Framework/windows/Control.h"
#include "Framework/windows/WindowTypes.h"

/// A drop-down list of texts, of which one is selected or none. Tells CBN_SELCHANGE when the user selects,
/// and not when the program does. None is selected at first; the selection stays with its text when others
/// are added.
class FRAMEWORK_API CComboBox : public CControl {
public:
    /// Outside of dialogs; see CWnd::Create(). `style` is 0, or CBS_SORT for a list that sorts its texts as
    /// they are added.
    ErrorString Create(DWORD style = 0, CWnd* parent = nullptr, UINT id = 0);

    /// Returns its position from 0; -1 without a window. A text may be there several times.
    int AddString(const CString& text);
    int GetCount() const;                  ///< how many texts there are; 0 without a window
    CString GetLBText(int position) const; ///< empty for a position that there is not

    /// The selected position; -1 for none.
    int GetCurSel() const;
    void SetCurSel(int position); ///< -1 for none; nothing happens for a position that there is not
};
