// SPDX-License-Identifier: MIT
#pragma once

#include "VelmBase/Export.h"

#include <string>

/// The value of an environment variable with all its characters; empty when there is no such variable.
VELMBASE_API std::wstring EnvironmentVariable(const std::wstring& name);
