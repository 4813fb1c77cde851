// SPDX-License-Identifier: MIT
#include "VelmBase/Environment.h"

#include <cstdlib>

std::wstring EnvironmentVariable(const std::wstring& name) {
    const wchar_t* const value = _wgetenv(name.c_str());
    return value ? value : L"";
}
