// SPDX-License-Identifier: MIT
#include "UtilityDLL/presentation/ContourInfo.h"

#include "UtilityDLL/presentation/private/Fields.h"

namespace {

constexpr const wchar_t* kOrientations[] = {L"OptimumTextAngle", L"LowToHigh", L"HighToLow"};

} // namespace

template <typename Exchange, typename Record> bool ContourInfo::Fields(Exchange field, Record& record) {
    field(L"SmoothingWindow"_key, record.m_smoothingWindow, FORM::Commented(L"Values between 0 and 8"));
    field.OnlyRead(L"LabelSpacing"_key, record.m_labelSpacing);
    field(L"ContourLabelSpacing"_key, record.m_labelSpacing);
    // "suppresion" is how existing files spell it.
    field(L"SuppressionLength"_key, record.m_suppressionLength,
          FORM::Commented(L"A value of 0 disables suppresion"));
    field(L"SmoothingPasses"_key, record.m_smoothingPasses);
    field(L"EnableContouring"_key, record.m_enableContouring);
    field(L"LabelOrientation"_key, record.m_labelOrientation, FORM::Name{kOrientations, false});
    return true;
}

bool ContourInfo::Read(const Section& section) {
    Fields(FieldReader(section), *this);
    return false; // whatever was read: callers know this record by it
}

bool ContourInfo::Write(Section& section) const { return Fields(FieldWriter(section), *this); }

bool ContourInfo::operator==(const ContourInfo& other) const {
    return m_smoothingWindow == other.m_smoothingWindow && m_smoothingPasses == other.m_smoothingPasses &&
           m_labelOrientation == other.m_labelOrientation && m_enableContouring == other.m_enableContouring &&
           MATH::equal(static_cast<double>(m_labelSpacing), static_cast<double>(other.m_labelSpacing)) &&
           MATH::equal(m_suppressionLength, other.m_suppressionLength);
}
