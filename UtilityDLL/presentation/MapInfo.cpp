// SPDX-License-Identifier: MIT
#include "UtilityDLL/presentation/MapInfo.h"

#include "UtilityDLL/presentation/private/Fields.h"

template <typename Exchange, typename Record> bool CMapInfo::Fields(Exchange field, Record& record) {
    field(L"SymbolizationType"_key, record.m_symbolizationType);
    field(L"ScaleLevel"_key, record.m_scaleLevel);
    field(L"DisplayType"_key, record.m_displayType);
    field(L"ShowTextGeneric"_key, record.m_textGeneric);
    field(L"ShowTextOther"_key, record.m_textOther);
    field(L"ShowChartContour"_key, record.m_chartContour);
    field(L"ShowLightsInfo"_key, record.m_lightsInfo);
    field(L"AntiCluttering"_key, record.m_antiCluttering);
    field(L"ShowBoundaries"_key, record.m_boundaries);
    return true;
}

bool CMapInfo::Read(const Section& section) { return Fields(FieldReader(section), *this); }
bool CMapInfo::Write(Section& section) const { return Fields(FieldWriter(section), *this); }
