// SPDX-License-Identifier: MIT
// Soundings as tables: any text is read to its end or refused, what is read is finite, and nothing of the
// table's size is kept beside it.

#include "UtilityDLL/runtime/PlotErrorReporter.h"
#include "VelmBase/WideString.h"
#include "apps/chartutil/sheet/project/Soundings.h"
#include "apps/chartutil/terminal/Errors.h"
#include "fuzz/Require.h"
#include "fuzz/ScratchFile.h"

#include <cmath>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const ScratchFile file;
    file.Write(data, size);
    std::uint64_t faults = 0, last = 0;
    try {
        const FoundSoundings found =
            ReadSoundings({UserText(ToUtf8(file.Path())), {}, {}, {}, {}},
                          [&](std::uint64_t line, const std::string& what) {
                              Require(line > last && !what.empty(), "faults come in the order of lines");
                              last = line;
                              ++faults;
                          });
        Require(!found.soundings.empty() && found.isTable);
        Require(found.soundings.size() + faults <= size, "a sounding has a line");
        for (const Sounding& sounding : found.soundings)
            Require(std::isfinite(sounding.place.X()) && std::isfinite(sounding.place.Y()) &&
                    std::isfinite(sounding.depth));
    } catch (const CommandError& error) {
        Require(*error.what() != 0);
    }
    return 0;
}
