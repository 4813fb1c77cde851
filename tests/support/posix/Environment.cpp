// SPDX-License-Identifier: MIT
#include "tests/support/Environment.h"

#include "VelmBase/WideString.h"

#include <cstdlib>

void SetEnvironment(const std::wstring& name, const std::wstring& value) {
    if (value.empty())
        unsetenv(ToUtf8(name).c_str());
    else
        setenv(ToUtf8(name).c_str(), ToUtf8(value).c_str(), 1);
}
