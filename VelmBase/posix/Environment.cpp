// SPDX-License-Identifier: MIT
#include "VelmBase/Environment.h"

#include "VelmBase/WideString.h"

#include <cstdlib>

std::wstring EnvironmentVariable(const std::wstring& name) {
    const char* const value = std::getenv(ToUtf8(name).c_str());
    return value ? FromUtf8(value) : std::wstring();
}
