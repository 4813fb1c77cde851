// SPDX-License-Identifier: MIT
#include "VelmBase/private/UserLanguage.h"

#include <windows.h>

std::wstring UserLanguage() {
    // Names, each with a NUL character behind it, the one that the user likes best first.
    ULONG count = 0;
    ULONG size = 0;
    if (!GetUserPreferredUILanguages(MUI_LANGUAGE_NAME, &count, nullptr, &size)) return {};
    std::wstring names(size, L'\0');
    if (!GetUserPreferredUILanguages(MUI_LANGUAGE_NAME, &count, names.data(), &size)) return {};
    return names.c_str();
}
