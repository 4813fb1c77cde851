// SPDX-License-Identifier: MIT
#pragma once

#include "VelmBase/Export.h"

#include <string>

/// The system's handle of the library or program that holds the code or data at `address`: on Windows its
/// instance handle, elsewhere the address at which it is loaded. Null when there is none.
VELMBASE_API void* ModuleAt(const void* address);

/// The full path of the file that this library was loaded from; empty when `module` is no handle of one.
VELMBASE_API std::wstring ModulePath(void* module);
