// SPDX-License-Identifier: MIT
#include "UtilityDLL/presentation/BiasInfo.h"

#include "UtilityDLL/presentation/private/Fields.h"

template <typename Exchange, typename Record> bool BiasInfo::Fields(Exchange field, Record& record) {
    field(L"BiasMode"_key, record.m_mode);
    return true;
}

bool BiasInfo::Read(const Section& section) { return Fields(FieldReader(section), *this); }
bool BiasInfo::Read(const std::wstring& prefix, const Section& section) {
    return Fields(FieldReader(section, prefix), *this);
}
bool BiasInfo::Write(Section& section) const { return Fields(FieldWriter(section), *this); }
bool BiasInfo::Write(const std::wstring& prefix, Section& section) const {
    return Fields(FieldWriter(section, prefix), *this);
}
