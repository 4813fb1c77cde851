#include "UtilityDLL/presentation/MapInfo.h"

#include "UtilityDLL/presentation/Fields.h"

template <typename Exchange, typename Record> bool CMapInfo::Fields(Exchange field, Record& record) {
    field(L"SymbolizationType", record.m_symbolizationType);
    field(L"ScaleLevel", record.m_scaleLevel);
    field(L"DisplayType", record.m_displayType);
    field(L"ShowTextGeneric", record.m_textGeneric);
    field(L"ShowTextOther", record.m_textOther);
    field(L"ShowChartContour", record.m_chartContour);
    field(L"ShowLightsInfo", record.m_lightsInfo);
    field(L"AntiCluttering", record.m_antiCluttering);
    field(L"ShowBoundaries", record.m_boundaries);
    return true;
}

bool CMapInfo::Read(const Section& section) { return Fields(FieldReader(section), *this); }
bool CMapInfo::Write(Section& section) const { return Fields(FieldWriter(section), *this); }
