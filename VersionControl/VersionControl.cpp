// SPDX-License-Identifier: MIT
#include "VersionControl/VersionControl.h"

#include "VelmBase/LibraryVersion.h"

#include <algorithm>

bool CheckDllVersion(unsigned int version, const char* /*sourceFile*/, const char* /*buildStamp*/) {
    // This library is one of them.
    const std::vector<CheckedLibrary> libraries = CheckLibraries(version);
    return std::all_of(libraries.begin(), libraries.end(), [](const CheckedLibrary& l) { return l.matches; });
}

std::vector<CheckedLibrary> CheckLibraries(std::uint32_t version) {
    const std::vector<LibraryVersion::Loaded> loaded = LibraryVersion::List();
    std::vector<CheckedLibrary> checked;
    checked.reserve(loaded.size());
    for (const LibraryVersion::Loaded& library : loaded)
        checked.push_back({library.name, library.version, library.version == version});
    return checked;
}
