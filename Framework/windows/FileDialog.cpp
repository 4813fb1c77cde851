// SPDX-License-Identifier: MIT
#include "Framework/windows/FileDialog.h"

#include "Framework/windows/private/NativeControls.h"
#include "VelmBase/FormatString.h"

#include <utility>

CFileDialog::CFileDialog(bool open, CString extension, CString fileName, DWORD flags, CString filter,
                         CWnd* parent)
    : m_open(open), m_extension(std::move(extension)), m_path(std::move(fileName)), m_flags(flags),
      m_filter(std::move(filter)), m_parent(parent) {}

void CFileDialog::SetInitialFolder(const CString& folder) { m_folder = folder; }

int CFileDialog::DoModal() {
    NativeToolkit* toolkit = nullptr;
    if (!OpenToolkit(toolkit)) return IDCANCEL;
    FileRequest request = {m_open, m_extension.String(), m_path.String(), m_flags, {}, m_folder.String()};
    const FormatString filter(m_filter.String(), L'|');
    for (int i = 0; i + 1 < filter.NumItems() && !filter[i].empty(); i += 2)
        request.filters.emplace_back(filter[i], filter[i + 1]);
    if (!toolkit->AskForFile(request, m_parent ? m_parent->Window() : nullptr)) return IDCANCEL;
    m_path = request.path;
    return IDOK;
}

CString CFileDialog::GetPathName() const { return m_path; }
