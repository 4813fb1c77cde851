// SPDX-License-Identifier: MIT
#include "apps/chartutil/Version.h"

#include "VelmBase/LibraryVersion.h"
#include "VersionControl/VersionControl.h"
#include "apps/chartutil/terminal/Columns.h"

#include <algorithm>

std::string VersionLines() {
    const std::vector<CheckedLibrary> libraries = CheckLibraries(CHARTUTIL_VERSION);
    std::size_t nameWidth = 0;
    std::size_t versionWidth = 0;
    for (const CheckedLibrary& library : libraries) {
        nameWidth = std::max(nameWidth, TextWidth(library.name));
        versionWidth = std::max(versionWidth, TextWidth(VersionText(library.version)));
    }
    std::string lines = "chartutil " + VersionText(CHARTUTIL_VERSION) +
                        "\nIts libraries, and whether they are of the same version:";
    for (const CheckedLibrary& library : libraries)
        lines += "\n  " + Padded(library.name, nameWidth) + "  " +
                 Padded(VersionText(library.version), versionWidth) + "  " +
                 (library.matches ? "matches" : "does not match");
    return lines;
}
