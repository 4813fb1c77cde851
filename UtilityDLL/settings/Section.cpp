// SPDX-License-Identifier: MIT
#include "UtilityDLL/settings/Section.h"

#include "VelmBase/CRCChecksum.h"
#include "VelmBase/Utf16.h"

#include <algorithm>

const HashedString<wchar_t> Section::m_ChecksumName(L"$CHECKSUM$");
const SectionKey Section::m_ErrorKey;

bool Section::HasKey(const std::wstring& name) const { return m_keys.Find(name) < m_keys.Size(); }

SectionKey& Section::KeyOf(std::wstring_view name) {
    const std::size_t position = m_keys.Find(name);
    return position < m_keys.Size() ? m_keys[position] : m_keys.Append(std::wstring(name));
}

const SectionKey& Section::KeyOf(std::wstring_view name) const {
    const std::size_t position = m_keys.Find(name);
    return position < m_keys.Size() ? m_keys[position] : m_ErrorKey;
}

SectionKey& Section::operator[](const HashedString<wchar_t>& name) {
    const std::size_t position = m_keys.Find(name.String());
    return position < m_keys.Size() ? m_keys[position] : m_keys.Append(name, std::wstring(), std::wstring());
}

bool Section::AddKey(const SectionKey& key) {
    m_keys.Append(key);
    return true;
}

bool Section::AddKey(SectionKey&& key) {
    m_keys.Append(std::move(key));
    return true;
}

bool Section::AddKey(const HashedString<wchar_t>& name, std::wstring value, const std::wstring& comments) {
    m_keys.Append(name, std::move(value), comments);
    return true;
}

Section& Section::operator+=(const SectionKey& key) {
    m_keys.Append(key);
    return *this;
}

Section& Section::operator<<(const Section& other) {
    // By position and count: `other` may be this section, which grows under the walk.
    const int count = other.NumKeys();
    for (int i = 0; i < count; ++i) m_keys.Append(other[i]);
    return *this;
}

bool Section::RemoveKey(const std::wstring& name) {
    const std::size_t position = m_keys.Find(name);
    if (position == m_keys.Size()) return false;
    m_keys.Remove(position);
    return true;
}

void Section::GetWriteOffsets(int& nameWidth, int& valueWidth) const {
    nameWidth = valueWidth = 0;
    for (const SectionKey& key : m_keys) {
        nameWidth = std::max(nameWidth, static_cast<int>(Utf16Length(key.GetName().String())));
        valueWidth = std::max(valueWidth, static_cast<int>(Utf16Length(key.GetValue())));
    }
}

unsigned int Section::ComputeChecksum() const {
    CRCChecksum checksum;
    for (const SectionKey& key : m_keys) {
        if (SameName(key.GetName(), m_ChecksumName)) continue;
        checksum += key.GetValue();
        checksum += key.GetName().String();
    }
    return checksum.Value();
}

void Section::AddChecksum() { KeyOf(m_ChecksumName.String()) << ComputeChecksum(); }

bool Section::IsModified() const {
    const SectionKey& stored = KeyOf(m_ChecksumName.String());
    if (!stored.IsValid()) return true;
    unsigned int checksum = 0;
    stored >> checksum;
    return checksum != ComputeChecksum();
}
