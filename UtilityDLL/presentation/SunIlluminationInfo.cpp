// SPDX-License-Identifier: MIT
#include "UtilityDLL/presentation/SunIlluminationInfo.h"

#include "UtilityDLL/presentation/private/Fields.h"

// "Illumunation" is how the files spell it; writing it otherwise would orphan them.
template <typename Exchange, typename Record>
bool SunIlluminationInfo::Fields(Exchange field, Record& record) {
    field(L"SunIllumunationEnable"_key, record.m_enable);
    field(L"SunIllumunationAzimuth"_key, record.m_azimuth);
    field(L"SunIllumunationElevation"_key, record.m_elevation);
    field(L"SunIllumunationContrast"_key, record.m_contrast);
    return true;
}

bool SunIlluminationInfo::Read(const Section& section) { return Fields(FieldReader(section), *this); }
bool SunIlluminationInfo::Read(const std::wstring& prefix, const Section& section) {
    return Fields(FieldReader(section, prefix), *this);
}
bool SunIlluminationInfo::Write(Section& section) const { return Fields(FieldWriter(section), *this); }
bool SunIlluminationInfo::Write(const std::wstring& prefix, Section& section) const {
    return Fields(FieldWriter(section, prefix), *this);
}

bool SunIlluminationInfo::operator==(const SunIlluminationInfo& other) const {
    return m_enable == other.m_enable && m_azimuth == other.m_azimuth && m_elevation == other.m_elevation &&
           m_contrast == other.m_contrast;
}
