// SPDX-License-Identifier: MIT
// Records from hostile sections, the text of grid styles among them: a section is read without fail, and what
// a record writes of it gives the same text when it is read and written again. The input is lines of
// "key=value"; a byte is a character.

#include "UtilityDLL/presentation/BiasInfo.h"
#include "UtilityDLL/presentation/ContourInfo.h"
#include "UtilityDLL/presentation/DXFInfo.h"
#include "UtilityDLL/presentation/GeoGridInfo.h"
#include "UtilityDLL/presentation/GridInfo.h"
#include "UtilityDLL/presentation/LineInfo.h"
#include "UtilityDLL/presentation/MapInfo.h"
#include "UtilityDLL/presentation/PanelInfo.h"
#include "UtilityDLL/presentation/PaperGrid.h"
#include "UtilityDLL/presentation/SunIlluminationInfo.h"
#include "UtilityDLL/presentation/TextInfo.h"
#include "fuzz/Require.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace {

template <typename Record> Section Written(const Section& source) {
    Record record;
    (void)record.Read(source);
    Section section;
    (void)record.Write(section);
    return section;
}

template <typename Record> void CheckRecord(const Section& source) {
    // Six digits behind the point come back; from the second time on nothing changes any more.
    const Section second = Written<Record>(Written<Record>(source));
    const Section third = Written<Record>(second);
    Require(second.NumKeys() == third.NumKeys());
    for (int i = 0; i < second.NumKeys(); ++i) {
        Require(second[i].GetName().String() == third[i].GetName().String());
        Require(second[i].GetValue() == third[i].GetValue());
    }
}

template <typename Record> void CheckPrefixed(const Section& source) {
    Record record;
    record.Read(L"P", source);
    Section section;
    record.Write(L"P", section);
    record.Read(L"P", section);
    CheckRecord<Record>(source);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::wstring text(data, data + size);
    Section section(L"Record");
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find(L'\n', begin), text.size());
        const std::wstring line = text.substr(begin, end - begin);
        const std::size_t equals = std::min(line.find(L'='), line.size());
        section[line.substr(0, equals)] << line.substr(std::min(equals + 1, line.size()));
        begin = end + 1;
    }
    CheckPrefixed<TextInfo>(section);
    CheckRecord<LineInfo>(section);
    CheckRecord<DXFInfo>(section);
    CheckRecord<GridInfo>(section);
    CheckRecord<PaperGrid>(section);
    CheckRecord<GeoGridInfo>(section);
    CheckRecord<ContourInfo>(section);
    CheckPrefixed<PanelInfo>(section);
    CheckPrefixed<SunIlluminationInfo>(section);
    CheckPrefixed<BiasInfo>(section);
    CheckRecord<CMapInfo>(section);
    return 0;
}
