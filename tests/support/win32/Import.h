// SPDX-License-Identifier: MIT
#pragma once

#include <basetsd.h>

/// Puts the address of a function in the place of the one that a library imports under that name, and returns
/// the one before. 0, and nothing changes, when it imports none of that name.
ULONG_PTR ReplaceImport(const char* name, ULONG_PTR function, const wchar_t* library = L"Framework.dll");
