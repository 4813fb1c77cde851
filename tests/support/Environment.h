// SPDX-License-Identifier: MIT
#pragma once

#include <string>

/// Gives this process and those that it starts an environment variable; an empty value takes it away.
void SetEnvironment(const std::wstring& name, const std::wstring& value);
