// SPDX-License-Identifier: MIT
#include "apps/chartutil/files/LayoutFile.h"

#include "VelmBase/SettingsText.h"
#include "apps/chartutil/files/InputFile.h"
#include "apps/chartutil/files/StandardStreams.h"
#include "apps/chartutil/terminal/Errors.h"

#include <algorithm>

Layout ReadLayout(const UserText& path, bool isLatin1) {
    const std::string bytes = ReadFile(path);
    if (bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF"))
        throw CommandError(ExitCode::IO_ERROR,
                           InputName(path) + ": is UTF-16, which is not read; save it as UTF-8");
    Layout layout{FromUtf8(bytes), isLatin1};
    const auto isStrayByte = [](wchar_t c) { return c >= 0xDC80 && c <= 0xDCFF; };
    layout.isLatin1 = isLatin1 || std::any_of(layout.text.begin(), layout.text.end(), isStrayByte);
    if (layout.isLatin1) layout.text = SETTINGS::Widened(bytes);
    return layout;
}

std::string Encoded(const std::wstring& text, bool isLatin1) {
    if (!isLatin1) return ToUtf8(text);
    std::string bytes;
    bytes.reserve(text.size());
    for (const wchar_t c : text) bytes += static_cast<char>(c);
    return bytes;
}
