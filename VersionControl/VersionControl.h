// SPDX-License-Identifier: MIT
#pragma once

#include "VersionControl/Export.h"

#include <cstdint>
#include <string>
#include <vector>

// Versions are numbers as VelmBase/LibraryVersion.h has them: 5.0.0.20 is 0x05000014.

/// True when `version`, which the caller was built with, is the version of this library and of every other
/// library of the suite that is loaded. A module asks when it is loaded, and must not be used after a false.
///
/// `sourceFile` and `buildStamp` (the compiler's date and time of that source: "Jul 15 2021 13:15:33") tell a
/// debugger at this function who asks; they decide nothing.
VERSIONCONTROL_API bool CheckDllVersion(unsigned int version, const char* sourceFile, const char* buildStamp);

/// A library of the suite that is loaded.
struct CheckedLibrary {
    std::string name;      ///< as the library's file, without its ending
    std::uint32_t version; ///< a byte for each of its four parts
    bool matches;          ///< whether it has the version that was asked for
};

/// All libraries of the suite that are loaded, each after those that it stands on, held against `version`.
/// For a host that shows what it runs with.
VERSIONCONTROL_API std::vector<CheckedLibrary> CheckLibraries(std::uint32_t version);
