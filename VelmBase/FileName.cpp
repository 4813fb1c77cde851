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
    m_path.resize(ExtensionStart(m_path));
    if (extension.empty()) return;
    if (extension[0] != L'.') m_path += L'.';
    m_path += extension;
}

std::wstring FileName::Title() const { return GetTitleFromPath(m_path); }

std::wstring GetTitleFromPath(const std::wstring& path) {
    const std::size_t start = NameStart(path);
    return path.substr(start, ExtensionStart(path) - start);
}
