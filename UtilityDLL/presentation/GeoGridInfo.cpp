// SPDX-License-Identifier: MIT
#include "UtilityDLL/presentation/GeoGridInfo.h"

#include "UtilityDLL/presentation/private/Fields.h"

template <typename Exchange, typename Record> bool GeoGridInfo::Fields(Exchange field, Record& record) {
    field(L"LonInterval"_key, record.m_lonInterval, FORM::PreciseMagnitude());
    field(L"LatInterval"_key, record.m_latInterval, FORM::PreciseMagnitude());
    field(L"LatLonStyle"_key, record.m_latLonStyle);
    field(L"LatLonDecimals"_key, record.m_latLonDecimals);
    field(L"TrailingHemisphereIndicator"_key, record.m_trailingHemisphereIndicator);
    field(L"DegMinSecSymbols"_key, record.m_degMinSecSymbols);
    field(L"GridStyle"_key, record.m_gridStyle);
    field(L"GridColor"_key, record.m_gridColor, FORM::IndexedColor());
    field(L"GridTrueColor"_key, record.m_gridColor);
    return true;
}

bool GeoGridInfo::Read(const Section& section) { return Fields(FieldReader(section), *this); }
bool GeoGridInfo::Write(Section& section) const { return Fields(FieldWriter(section), *this); }

bool GeoGridInfo::operator==(const GeoGridInfo& other) const {
    return m_gridColor == other.m_gridColor && m_latLonStyle == other.m_latLonStyle &&
           m_gridStyle == other.m_gridStyle && MATH::equal(m_latInterval, other.m_latInterval) &&
           MATH::equal(m_lonInterval, other.m_lonInterval) && m_latLonDecimals == other.m_latLonDecimals &&
           m_trailingHemisphereIndicator == other.m_trailingHemisphereIndicator &&
           m_degMinSecSymbols == other.m_degMinSecSymbols;
}
