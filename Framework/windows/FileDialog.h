#pragma once

#include "Framework/windows/WindowTypes.h"
#include "Framework/windows/Wnd.h"

/// The system's dialog for the file to open or to save to.
class FRAMEWORK_API CFileDialog {
public:
    /// `filter` is pairs of a name and a pattern, "Tables (*.col)|*.col||". `extension` is added to a name
    /// that has none. OFN_OVERWRITEPROMPT asks before a file that is there is taken for saving.
    CFileDialog(bool open, CString extension, CString fileName, DWORD flags, CString filter,
                CWnd* parent = nullptr);

    /// The folder that is shown first; empty for the system's choice.
    void SetInitialFolder(const CString& folder);

    /// IDOK, or IDCANCEL, also when it cannot be shown.
    int DoModal();

    CString GetPathName() const; ///< what was chosen, with its folder
private:
    bool m_open;
    CString m_extension;
    CString m_path;
    DWORD m_flags;
    CString m_filter;
    CString m_folder;
    CWnd* m_parent;
};
