// SPDX-License-Identifier: MIT
#include "UtilityDLL/presentation/PanelInfo.h"

#include "UtilityDLL/presentation/private/Fields.h"

template <typename Exchange, typename Record> bool PanelInfo::Fields(Exchange field, Record& record) {
    field(L"Width"_key, record.width);
    field(L"Height"_key, record.height);
    if (!field.IsPrefixed()) { // panels that share a section share no position
        field(L"PosX"_key, record.posX, FORM::OrZero());
        field(L"PosY"_key, record.posY, FORM::OrZero());
    }
    field(L"LockPosSize"_key, record.lockPosSize);
    field(L"Justification"_key, record.justification, FORM::OrZero());
    return true;
}

bool PanelInfo::Read(const Section& section) { return Fields(FieldReader(section), *this); }
bool PanelInfo::Read(const std::wstring& prefix, const Section& section) {
    return Fields(FieldReader(section, prefix), *this);
}
bool PanelInfo::Write(Section& section) const { return Fields(FieldWriter(section), *this); }
bool PanelInfo::Write(const std::wstring& prefix, Section& section) const {
    return Fields(FieldWriter(section, prefix), *this);
}

bool PanelInfo::operator==(const PanelInfo& other) const {
    return MATH::equal(static_cast<double>(width), static_cast<double>(other.width)) &&
           MATH::equal(static_cast<double>(height), static_cast<double>(other.height)) &&
           MATH::equal(posX, other.posX) && MATH::equal(posY, other.posY) &&
           lockPosSize == other.lockPosSize && justification == other.justification;
}
