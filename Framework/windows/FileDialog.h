// SPDX-License-Identifier: MIT
#pragma once

#include "Framework/windows/WindowTypes.h"
#include "Framework/windows/Wnd.h"

/// The system's dialog for the file to open or to save to.
class FRAMEWORK_API CFileDialog {
public:
    /// `filter` is pairs of a name and a pattern, "Tables (*.col)|*.col||". `extension` is added to a name
    /// that has none. `fileName` is proposed. OFN_OVERWRITEPROMPT asks before a file that is there is taken
    /// for saving; to open, only a file that is there is taken. The parent has to be there when it is shown.
    CFileDialog(bool open, CString extension, CString fileName, DWORD flags, CString filter,
                CWnd* parent = nullptr);

    /// The folder that is shown first; empty for the system's choice.
    void SetInitialFolder(const CString& folder);

    /// IDOK, or IDCANCEL, also when it cannot be shown.
    int DoModal();

    CString GetPathName() const; ///< what was chosen, with its folder; before that, what is proposed

private:
    bool m_open;
    CString m_extension;
    CString m_path;
    DWORD m_flags;
    CString m_filter;
    CString m_folder;
    CWnd* m_parent;
};
