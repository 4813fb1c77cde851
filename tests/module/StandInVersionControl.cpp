// SPDX-License-Identifier: MIT
// A version-control library that says no to everybody.

#include "VersionControl/VersionControl.h"

bool CheckDllVersion(unsigned int, const char*, const char*) { return false; }
std::vector<CheckedLibrary> CheckLibraries(std::uint32_t) { return {}; }
