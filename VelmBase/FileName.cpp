// SPDX-License-Identifier: MIT
#include "VelmBase/FileName.h"

namespace {

std::size_t NameStart(const std::wstring& path) {
    const std::size_t separator = path.find_last_of(L"/\\");
    return separator == std::wstring::npos ? 0 : separator + 1;
}

// Where the extension's dot stands, or the end. A leading dot belongs to the name.
std::size_t ExtensionStart(const std::wstring& path) {
    const std::size_t dot = path.rfind(L'.');
    return dot == std::wstring::npos || dot <= NameStart(path) ? path.size() : dot;
}

} // namespace

void FileName::SetExtension(const std::wstring& extension) {
    std::wstring path =
        m_path.substr(0, ExtensionStart(m_path)); // not in place: `extension` may be a part of it
    if (!extension.empty() && extension[0] != L'.') path += L'.';
    m_path = path + extension;
}

std::wstring FileName::Title() const { return GetTitleFromPath(m_path); }

std::wstring GetTitleFromPath(const std::wstring& path) {
    const std::size_t start = NameStart(path);
    return path.substr(start, ExtensionStart(path) - start);
}
