// SPDX-License-Identifier: MIT
#include "UtilityDLL/settings/SectionKey.h"

#include "VelmBase/NumberText.h"

SectionKey& SectionKey::operator<<(const char* value) {
    if (value) m_value = FromNarrow(value);
    return *this;
}

SectionKey& SectionKey::operator<<(const wchar_t* value) {
    if (value) m_value = value;
    return *this;
}

SectionKey& SectionKey::operator<<(const std::wstring& value) {
    m_value = value;
    return *this;
}

SectionKey& SectionKey::operator<<(double value) {
    m_value = NumberText::FromFixed(value);
    return *this;
}

SectionKey& SectionKey::SetInteger(long long value) {
    m_value = NumberText::FromInteger(value);
    return *this;
}

SectionKey& SectionKey::SetUnsigned(unsigned long long value) {
    m_value = NumberText::FromInteger(value);
    return *this;
}

const SectionKey& SectionKey::operator>>(std::wstring& value) const {
    value = m_value;
    return *this;
}

const SectionKey& SectionKey::operator>>(CString& value) const {
    value = m_value;
    return *this;
}

const SectionKey& SectionKey::operator>>(short& value) const {
    NumberText::Extract(m_value, value);
    return *this;
}

const SectionKey& SectionKey::operator>>(unsigned short& value) const {
    NumberText::Extract(m_value, value);
    return *this;
}

const SectionKey& SectionKey::operator>>(int& value) const {
    NumberText::Extract(m_value, value);
    return *this;
}

const SectionKey& SectionKey::operator>>(unsigned int& value) const {
    NumberText::Extract(m_value, value);
    return *this;
}

const SectionKey& SectionKey::operator>>(long& value) const {
    NumberText::Extract(m_value, value);
    return *this;
}

const SectionKey& SectionKey::operator>>(unsigned long& value) const {
    NumberText::Extract(m_value, value);
    return *this;
}

const SectionKey& SectionKey::operator>>(bool& value) const {
    NumberText::Extract(m_value, value);
    return *this;
}

const SectionKey& SectionKey::operator>>(float& value) const {
    NumberText::Extract(m_value, value);
    return *this;
}

const SectionKey& SectionKey::operator>>(double& value) const {
    NumberText::Extract(m_value, value);
    return *this;
}
