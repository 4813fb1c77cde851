// SPDX-License-Identifier: MIT
#include "UtilityDLL/keywords/Keywords.h"

#include "UtilityDLL/keywords/Placeholders.h"
#include "VelmBase/VelmString.h"

#include <algorithm>
#include <iterator>
#include <utility>
#include <vector>

const std::wstring CKeywords::PredefinedKeywordKeys[9] = {
    L"plot project",   L"current date", L"current time",   L"coordinate system", L"project name",
    L"project number", L"project task", L"project client", L"project contractor"};

const std::wstring CKeywords::PredefinedPlotKeywordKeys[1] = {L"plot name"};

namespace {

constexpr wchar_t kSeparator = L'%';

// Up to so many keywords that the host may rename are looked at one by one.
constexpr std::size_t kFewHandedOut = 8;

// A host may have set any count.
void AddWrapping(std::int32_t& count, std::int32_t more) {
    count = static_cast<std::int32_t>(static_cast<std::uint32_t>(count) + static_cast<std::uint32_t>(more));
}

template <std::size_t N> bool Contains(const std::wstring (&names)[N], const std::wstring& name) {
    return std::find(std::begin(names), std::end(names), name) != std::end(names);
}

} // namespace

std::uint32_t CKeywords::PositionIn(const Sequence& keywords, const TextIndex& index,
                                    std::wstring_view name) {
    return index.Find(name, [&](std::uint32_t i) -> std::wstring_view { return keywords[i].name; });
}

TextIndex CKeywords::IndexOf(const Sequence& keywords) {
    TextIndex index;
    std::uint32_t position = 0;
    for (const CKeyword& keyword : keywords) {
        index.MakeRoomForOne();
        if (PositionIn(keywords, index, keyword.name) == TextIndex::kNone) index.Add(keyword.name, position);
        ++position;
    }
    return index;
}

// Whether the index and a look at the few keywords that the host may rename tell where every name is. Of
// names that were there twice the index has the first alone, so it cannot tell when the host has renamed that
// one.
bool CKeywords::IsIndexed() const {
    const bool hasRepeatedNames = m_index.Size() < m_keywords.size();
    return m_hasIndex && m_handedOut.size() <= (hasRepeatedNames ? 0 : kFewHandedOut);
}

std::uint32_t CKeywords::IndexedPosition(std::wstring_view name) const {
    std::uint32_t position = PositionIn(m_keywords, m_index, name);
    if (m_handedOut.size() <= kFewHandedOut)
        for (const std::uint32_t renamed : m_handedOut)
            if (renamed < position && m_keywords[renamed].name == name) position = renamed;
    return position;
}

std::uint32_t CKeywords::PositionOf(std::wstring_view name) const {
    if (IsIndexed()) return IndexedPosition(name);
    const auto found = std::find_if(m_keywords.begin(), m_keywords.end(),
                                    [&](const CKeyword& keyword) { return keyword.name == name; });
    return found != m_keywords.end() ? static_cast<std::uint32_t>(found - m_keywords.begin())
                                     : TextIndex::kNone;
}

const CKeyword* CKeywords::Find(std::wstring_view name) const {
    const std::uint32_t position = PositionOf(name);
    return position != TextIndex::kNone ? &m_keywords[position] : nullptr;
}

CKeyword* CKeywords::Find(std::wstring_view name) {
    return const_cast<CKeyword*>(std::as_const(*this).Find(name));
}

// From here to the end of a call no host can rename a keyword.
void CKeywords::PrepareForMany() {
    if (IsIndexed()) return;
    m_hasIndex = false;
    m_index = IndexOf(m_keywords);
    m_hasIndex = true;
}

CKeyword* CKeywords::FindPrepared(std::wstring_view name) {
    const std::uint32_t position = IndexedPosition(name);
    return position != TextIndex::kNone ? &m_keywords[position] : nullptr;
}

// To be called with a name that the set does not have.
void CKeywords::Append(CKeyword keyword) {
    if (m_hasIndex) m_index.MakeRoomForOne();
    m_keywords.push_back(std::move(keyword));
    if (m_hasIndex) m_index.Add(m_keywords.back().name, static_cast<std::uint32_t>(m_keywords.size() - 1));
}

void CKeywords::CountOne(std::wstring_view name, std::wstring_view newValue) {
    if (CKeyword* const found = FindPrepared(name)) {
        AddWrapping(found->refCount, 1);
        return;
    }
    CKeyword keyword;
    keyword.refCount = 1;
    keyword.value = newValue;
    keyword.name = name;
    Append(std::move(keyword));
}

// Keywords were removed: pointers to keywords have ended.
void CKeywords::ForgetPositions() {
    m_hasIndex = false;
    m_handedOut.clear();
}

template <typename Predicate> void CKeywords::RemoveIf(Predicate predicate) {
    if (std::erase_if(m_keywords, predicate) > 0) ForgetPositions();
}

CKeyword* CKeywords::HandOut(std::uint32_t position) {
    const bool isNoted = std::find(m_handedOut.begin(), m_handedOut.end(), position) != m_handedOut.end();
    if (!isNoted && m_handedOut.size() <= kFewHandedOut) m_handedOut.push_back(position);
    return &m_keywords[position];
}

CKeyword* CKeywords::GetKeyword(const std::wstring& name) {
    const std::uint32_t position = PositionOf(name);
    return position != TextIndex::kNone ? HandOut(position) : nullptr;
}

CKeyword* CKeywords::GetKeyword(int index) {
    return index >= 0 && index < GetSize() ? HandOut(static_cast<std::uint32_t>(index)) : nullptr;
}

const CKeyword* CKeywords::GetKeywordConst(const std::wstring& name) const { return Find(name); }

const CKeyword* CKeywords::GetKeywordConst(int index) const {
    return index >= 0 && index < GetSize() ? &m_keywords[static_cast<std::size_t>(index)] : nullptr;
}

void CKeywords::Clear() {
    m_keywords.clear();
    m_index.Clear();
    m_hasIndex = true;
    m_handedOut.clear();
}

void CKeywords::ClearRefCount() {
    for (CKeyword& keyword : m_keywords) keyword.refCount = 0;
}

void CKeywords::AddKeyword(const CKeyword* keyword) {
    if (!keyword) return;
    if (m_handedOut.empty()) PrepareForMany();
    if (CKeyword* const found = Find(keyword->name))
        AddWrapping(found->refCount, keyword->refCount);
    else
        Append(*keyword);
}

void CKeywords::AddKeywordToFront(const CKeyword* keyword) {
    if (!keyword) return;
    if (CKeyword* const found = Find(keyword->name)) {
        AddWrapping(found->refCount, keyword->refCount);
        return;
    }
    m_keywords.push_front(*keyword);
    m_hasIndex = false;
    for (std::uint32_t& position : m_handedOut) ++position;
}

void CKeywords::AddKeywords(const CKeywords& other) {
    PrepareForMany();
    // By position and count: `other` may be this set.
    const int count = other.GetSize();
    for (int i = 0; i < count; ++i) {
        const CKeyword& keyword = *other.GetKeywordConst(i);
        if (CKeyword* const found = FindPrepared(keyword.name))
            AddWrapping(found->refCount, keyword.refCount);
        else
            Append(keyword);
    }
}

void CKeywords::AddRefcountRemove(CKeywords& other) {
    if (&other == this) return Clear();
    PrepareForMany();
    other.RemoveIf([this](const CKeyword& keyword) {
        CKeyword* const found = FindPrepared(keyword.name);
        if (found) AddWrapping(found->refCount, keyword.refCount);
        return found != nullptr;
    });
}

void CKeywords::ExcludeKeywords(const CKeywords& other) {
    if (&other == this) return Clear();
    const TextIndex names = IndexOf(other.m_keywords);
    std::vector<std::uint32_t> left(
        other.m_keywords.size()); // still to be removed, by the name's first position
    for (const CKeyword& keyword : other.m_keywords)
        ++left[PositionIn(other.m_keywords, names, keyword.name)];
    RemoveIf([&](const CKeyword& keyword) {
        const std::uint32_t position = PositionIn(other.m_keywords, names, keyword.name);
        if (position == TextIndex::kNone || left[position] == 0) return false;
        --left[position];
        return true;
    });
}

void CKeywords::RemoveKeyword(const std::wstring& name, bool force) {
    const std::uint32_t position = PositionOf(name);
    if (position == TextIndex::kNone || (!force && m_keywords[position].refCount != 0)) return;
    m_keywords.erase(m_keywords.begin() + static_cast<std::ptrdiff_t>(position));
    ForgetPositions();
}

void CKeywords::SetValues(const CKeywords& other) {
    const TextIndex names = IndexOf(other.m_keywords);
    for (CKeyword& keyword : m_keywords) {
        const std::uint32_t position = PositionIn(other.m_keywords, names, keyword.name);
        if (position != TextIndex::kNone) keyword.value = other.m_keywords[position].value;
    }
}

void CKeywords::AddKeywordsInString(const std::wstring& text) {
    PrepareForMany();
    for (Placeholders placeholders(text); placeholders.Next();)
        CountOne(placeholders.Name(), placeholders.Name());
}

bool CKeywords::operator==(const CKeywords& other) const {
    if (GetSize() != other.GetSize()) return false;
    using Entry = std::pair<std::wstring_view, std::wstring_view>;
    std::vector<Entry> theirs;
    theirs.reserve(other.m_keywords.size());
    for (const CKeyword& keyword : other.m_keywords) theirs.emplace_back(keyword.name, keyword.value);
    std::sort(theirs.begin(), theirs.end());
    return std::all_of(m_keywords.begin(), m_keywords.end(), [&](const CKeyword& keyword) {
        return std::binary_search(theirs.begin(), theirs.end(), Entry(keyword.name, keyword.value));
    });
}

unsigned int CKeywords::GetChecksum() const {
    Section section(L"$KEYWORDS$");
    (void)Write(section); // never fails
    return section.ComputeChecksum();
}

std::wstring CKeywords::ToString() const {
    CVelmString names(kSeparator);
    for (const CKeyword& keyword : m_keywords) names.AddItem(keyword.name);
    return names.Text();
}

void CKeywords::FromString(const std::wstring& text) {
    const CVelmString names(text, kSeparator); // first, since the text may be a keyword's
    Clear();
    for (int i = 0; i < names.NumItems(); ++i)
        if (const std::wstring name = names.GetItem(i); !name.empty()) CountOne(name, {});
}

ErrorString CKeywords::Write(Section& section) const {
    section.Clear();
    for (const CKeyword& keyword : m_keywords) section.AddKey(keyword.name, keyword.value, {});
    return {};
}

ErrorString CKeywords::Read(const Section& section) {
    Clear();
    m_hasIndex = false;
    for (int i = 0; i < section.NumKeys(); ++i) {
        CKeyword keyword;
        keyword.name = section[i].GetName().String();
        keyword.value = section[i].GetValue();
        m_keywords.push_back(std::move(keyword)); // also when the name is taken
    }
    PrepareForMany();
    return {};
}

bool CKeywords::IsPredefinedKeyword(const std::wstring& name) {
    return Contains(PredefinedKeywordKeys, name);
}

bool CKeywords::IsPredefinedPlotKeyword(const std::wstring& name) {
    return Contains(PredefinedPlotKeywordKeys, name);
}
