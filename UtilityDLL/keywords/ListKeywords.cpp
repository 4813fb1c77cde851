// SPDX-License-Identifier: MIT
#include "UtilityDLL/keywords/ListKeywords.h"

#include "UtilityDLL/settings/IniFile.h"
#include "VelmConfigure/DataSearch.h"

#include <algorithm>

std::wstring CListKeyword::GetValue(int index) const {
    return index >= 0 && index < GetSize() ? m_values[static_cast<std::size_t>(index)] : std::wstring();
}

void CListKeyword::AddValue(const std::wstring& value) {
    const auto valueAt = [this](std::uint32_t i) -> std::wstring_view { return m_values[i]; };
    if (m_index.Find(value, valueAt) != TextIndex::kNone) return;
    m_index.MakeRoomForOne();
    m_values.push_back(value);
    m_index.Add(m_values.back(), static_cast<std::uint32_t>(m_values.size() - 1));
}

void CListKeyword::Clear() {
    m_values.clear();
    m_index.Clear();
}

CListKeywords& CListKeywords::Get() {
    static CListKeywords lists;
    return lists;
}

CListKeyword* CListKeywords::GetListKeyword(const std::wstring& name) {
    CheckInit();
    const auto found = std::find_if(m_lists.begin(), m_lists.end(),
                                    [&](const CListKeyword& list) { return list.m_name == name; });
    return found != m_lists.end() ? &*found : nullptr;
}

CListKeyword* CListKeywords::GetListKeyword(int index) {
    CheckInit();
    return index >= 0 && index < static_cast<int>(m_lists.size()) ? &m_lists[static_cast<std::size_t>(index)]
                                                                  : nullptr;
}

void CListKeywords::CheckInit() {
    if (!m_needsLoading) return;
    std::wstring path = L"Keywords";
    DataSearch::GetDataSearch().GetFullPath(DataSearch::CHOICE_LISTS, path);
    IniFile file;
    (void)file.Open(path); // whatever could be read counts
    m_lists.clear();
    m_lists.reserve(static_cast<std::size_t>(file.NumSections()));
    for (int i = 0; i < file.NumSections(); ++i) {
        const Section& section = std::as_const(file)[i];
        CListKeyword& list = m_lists.emplace_back();
        list.SetName(section.GetName());
        for (int k = 0; k < section.NumKeys(); ++k) list.AddValue(section[k].GetName());
    }
    m_needsLoading = false;
}
