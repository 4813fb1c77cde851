// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/Export.h"
#include "UtilityDLL/keywords/detail/TextIndex.h"
#include "UtilityDLL/settings/Section.h"
#include "VelmBase/ErrorString.h"

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

/// A keyword of a plot layout: what a placeholder "%name%" is replaced by.
struct CKeyword {
    std::int32_t refCount = 0;  ///< how often it was met or added
    std::int32_t reserved1 = 0; ///< the host's; copied with the keyword
    std::int32_t reserved2 = 0; ///< the host's; copied with the keyword
    std::wstring value;         ///< the text that replaces the placeholder
    std::wstring name;          ///< without the percent signs

    /// All fields, the count and the host's included.
    bool operator==(const CKeyword& other) const = default;
};

/// The keywords of a layout, in the order in which they were added. Names match exactly, letter case
/// included, and are unique, but for a set that was read from a section with repeated keys or whose keywords
/// the host renamed; then the first of a name counts.
///
/// A pointer to a keyword holds while keywords are added; removing and replacing end it. The host may rename
/// a keyword through it: the new name is found from then on, the old one is not. Reference counts wrap at 32
/// bits.
///
/// An operation over a whole text or set takes time in proportion to it. A single look-up by name is
/// immediate, but scans the set once a keyword was removed or put in front, or while the host has pointers to
/// more than eight keywords that it may rename.
class UTILITYDLL_API CKeywords {
public:
    CKeywords() = default; ///< no keywords

    /// Copies are independent: pointers to keywords of one do not lead into the other.
    /// @{
    CKeywords(const CKeywords& other) : m_keywords(other.m_keywords), m_index(IndexOf(m_keywords)) {}
    CKeywords(CKeywords&& other) = default;
    // By a new set: keywords that were overwritten in place could still be renamed through old pointers.
    CKeywords& operator=(const CKeywords& other) { return *this = CKeywords(other); }
    CKeywords& operator=(CKeywords&& other) = default;
    /// @}

    virtual ~CKeywords() = default;

    /// How many keywords there are.
    int GetSize() const { return static_cast<int>(m_keywords.size()); }

    /// The first keyword of that name, or the one at that position from 0; null when there is none.
    /// @{
    CKeyword* GetKeyword(const std::wstring& name);
    CKeyword* GetKeyword(int index);
    const CKeyword* GetKeywordConst(const std::wstring& name) const;
    const CKeyword* GetKeywordConst(int index) const;
    /// @}

    /// Removes all keywords, or sets all their counts to 0.
    /// @{
    void Clear();
    void ClearRefCount();
    /// @}

    /// Adds the count of `keyword` to the keyword of that name, whose value stays, or appends a copy. A null
    /// pointer changes nothing.
    void AddKeyword(const CKeyword* keyword);

    /// The same, but a new keyword goes to the front.
    void AddKeywordToFront(const CKeyword* keyword);

    /// AddKeyword() for each keyword of `other`, in order.
    void AddKeywords(const CKeywords& other);

    /// Moves out of `other` the keywords that this set has too, and adds their counts to those of this set.
    void AddRefcountRemove(CKeywords& other);

    /// Removes, for each keyword of `other`, the first one of that name, whatever its count.
    void ExcludeKeywords(const CKeywords& other);

    /// Removes the first keyword of that name, if its count is 0 or `force` is set.
    void RemoveKeyword(const std::wstring& name, bool force);

    /// Takes the values of the keywords that `other` has too.
    void SetValues(const CKeywords& other);

    /// Adds each placeholder of `text` (see Placeholders): one more on the count of a keyword of that name,
    /// or a new keyword with its name as value and count 1.
    void AddKeywordsInString(const std::wstring& text);

    /// The same keywords with the same values, in any order; counts do not matter.
    bool operator==(const CKeywords& other) const;

    /// The sum over values and names in order, by which a change of the set is noticed; counts do not matter.
    unsigned int GetChecksum() const;

    /// The names, joined by "%".
    std::wstring ToString() const;

    /// Replaces the set by the names between "%"s: empty values, and a count of how often each name occurs.
    void FromString(const std::wstring& text);

    /// Replaces the section's keys by one for each keyword. Counts are not stored. Always true.
    ErrorString Write(Section& section) const;

    /// Replaces the set by one keyword for each key, the checksum key and nameless ones included, with count
    /// 0. Always true.
    ErrorString Read(const Section& section);

    /// Whether the application fills a keyword of that name by itself, in any layout or in a plot's.
    /// @{
    static bool IsPredefinedKeyword(const std::wstring& name);
    static bool IsPredefinedPlotKeyword(const std::wstring& name);
    /// @}

    /// Does nothing.
    void Dump() const {}

    /// The names that IsPredefinedKeyword() and IsPredefinedPlotKeyword() know.
    /// @{
    static const std::wstring PredefinedKeywordKeys[9];
    static const std::wstring PredefinedPlotKeywordKeys[1];
    /// @}

private:
    using Sequence = std::deque<CKeyword>;

    static std::uint32_t PositionIn(const Sequence& keywords, const TextIndex& index, std::wstring_view name);
    static TextIndex IndexOf(const Sequence& keywords);

    std::uint32_t PositionOf(std::wstring_view name) const;
    const CKeyword* Find(std::wstring_view name) const;
    CKeyword* Find(std::wstring_view name);
    bool IsIndexed() const;
    void PrepareForMany();
    CKeyword* FindPrepared(std::wstring_view name);
    std::uint32_t IndexedPosition(std::wstring_view name) const;
    CKeyword* HandOut(std::uint32_t position);
    void Append(CKeyword keyword);
    void CountOne(std::wstring_view name, std::wstring_view newValue);
    void ForgetPositions();
    template <typename Predicate> void RemoveIf(Predicate predicate);

    Sequence m_keywords;
    TextIndex m_index;
    bool m_hasIndex = true; // it has every keyword, under the name that it had when it was entered
    std::vector<std::uint32_t>
        m_handedOut; // positions of keywords that the host may rename; not all, when many
};
