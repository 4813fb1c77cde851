// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/colors/DXFColor.h"
#include "UtilityDLL/contours/ContourDefinitionList.h"
#include "UtilityDLL/settings/IniFile.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// The contours of a definition file by the settings store's plain reading, for what is read faster; nullopt
/// when the file cannot be read.
inline std::optional<std::vector<ContourDefinitionList::ContourDefInfo>>
RecordsByIniFile(const std::wstring& path) {
    IniFile opened;
    if (!opened.Open(path)) return std::nullopt;
    const IniFile& file = opened;
    std::vector<ContourDefinitionList::ContourDefInfo> records;
    for (int i = 0;; ++i) {
        const Section& section = file[L"Contour(" + std::to_wstring(i) + L")"];
        if (section.NumKeys() == 0) return records;
        ContourDefinitionList::ContourDefInfo& info = records.emplace_back();
        int index = 0;
        section[L"Color"] >> index;
        auto color = static_cast<unsigned long>(DXFColor(index));
        if (section.HasKey(L"TrueColor")) section[L"TrueColor"] >> color;
        info.trueColor = static_cast<std::uint32_t>(color);
        if (icompareW(section[L"LineType"].GetValue(), L"DASHED")) info.lineType = 1;
        if (icompareW(section[L"LineType"].GetValue(), L"DOTTED")) info.lineType = 2;
        section[L"Annotate"] >> info.annotate;
        section[L"Level"] >> info.level;
        section[L"LineWidth"] >> info.lineWidth;
    }
}
