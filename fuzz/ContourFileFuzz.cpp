// SPDX-License-Identifier: MIT
// Contour definition files: what is loaded against the settings store's reading of the same file, and saving
// what was loaded: from the first save on a file loads and saves as itself.

#include "UtilityDLL/contours/ContourDefinitionList.h"

#include "fuzz/Require.h"
#include "fuzz/ScratchFile.h"
#include "tests/support/ContourRecords.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace {

using Info = ContourDefinitionList::ContourDefInfo;

std::vector<Info> RecordsOf(const ContourDefinitionList& list) {
    std::vector<Info> records;
    for (int i = 0; i < list.NumContours(); ++i) records.push_back(list[i]);
    return records;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const ScratchFile file;
    file.Write(data, size);
    ContourDefinitionList list;
    const bool loaded = list.Load(file.Path().c_str());
    Require(RecordsOf(list) == RecordsByIniFile(file.Path()).value_or(std::vector<Info>{}));
    Require(loaded == (list.NumContours() > 0));
    if (!loaded) return 0;

    Require(list.Save(file.Path().c_str()));
    const std::string once = file.Read();
    ContourDefinitionList again;
    Require(again.Load(file.Path().c_str()) && again.NumContours() == list.NumContours());
    Require(again.Save(file.Path().c_str()) && file.Read() == once);

    // Edits keep to the list, sorted or not.
    for (int i = 0; i < list.NumContours(); ++i) {
        Info info = list[i];
        info.level = -info.level;
        Require(list.Set(i, info) < list.NumContours() && list.Add(info) < list.NumContours());
    }
    return 0;
}
