// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/Export.h"
#include "UtilityDLL/keywords/detail/TextIndex.h"

#include <string>
#include <vector>

/// The choices that are offered for the value of a keyword, in the order of their file and each once. Names
/// and values match exactly, letter case included.
class UTILITYDLL_API CListKeyword {
public:
    CListKeyword() = default; ///< no name and no choices

    /// Copies are independent.
    /// @{
    CListKeyword(const CListKeyword& other) = default;
    CListKeyword(CListKeyword&& other) = default;
    CListKeyword& operator=(const CListKeyword& other) = default;
    CListKeyword& operator=(CListKeyword&& other) = default;
    /// @}

    virtual ~CListKeyword() = default;

    /// The keyword that the choices are for.
    /// @{
    std::wstring GetName() const { return m_name; }
    void SetName(const std::wstring& name) { m_name = name; }
    /// @}

    /// How many choices there are.
    int GetSize() const { return static_cast<int>(m_values.size()); }

    /// The choice at that position, from 0; an empty text when there is none.
    std::wstring GetValue(int index) const;

    /// Appends a choice that is not there yet.
    void AddValue(const std::wstring& value);

    /// Removes the choices; the name stays.
    void Clear();

private:
    friend class CListKeywords; // looks names up without copying them

    std::wstring m_name;
    std::vector<std::wstring> m_values;
    TextIndex m_index;
};

/// The choice lists of the file "Keywords", which DataSearch finds in its category CHOICE_LISTS: a section
/// for each keyword, a line for each choice. The file is read at the first look-up and never again; a missing
/// or broken one gives the lists that could be read, without a message.
///
/// Process-wide, made on first use. Not locked: every call belongs to one thread.
class UTILITYDLL_API CListKeywords {
public:
    /// The lists of the process.
    static CListKeywords& Get();
    virtual ~CListKeywords() = default;

    /// The first list of that name, or the one at that position from 0; null when there is none. The pointer
    /// holds as long as the process.
    /// @{
    CListKeyword* GetListKeyword(const std::wstring& name);
    CListKeyword* GetListKeyword(int index);
    /// @}

protected:
    /// Not loaded yet. For a set of its own, beside the process-wide one.
    CListKeywords() = default;

    /// Reads the file unless that was done before.
    void CheckInit();

private:
    bool m_needsLoading = true;
    std::vector<CListKeyword> m_lists;
};
