// SPDX-License-Identifier: MIT
#include "tests/support/Environment.h"

#include <cstdlib>

void SetEnvironment(const std::wstring& name, const std::wstring& value) {
    _wputenv_s(name.c_str(), value.c_str()); // which gives it to the system too
}
