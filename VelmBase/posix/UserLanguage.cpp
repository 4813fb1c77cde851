// SPDX-License-Identifier: MIT
#include "VelmBase/private/UserLanguage.h"

#include "VelmBase/Environment.h"

std::wstring UserLanguage() {
    std::wstring language;
    for (const wchar_t* const variable : {L"LC_ALL", L"LC_MESSAGES", L"LANG"})
        if (language.empty()) language = EnvironmentVariable(variable);
    return language;
}
