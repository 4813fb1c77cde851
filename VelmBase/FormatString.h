// SPDX-License-Identifier: MIT
#pragma once

#include "VelmBase/Export.h"

#include <limits>
#include <string>
#include <vector>

/// A text split into items at a separator. Empty items are kept, also between and behind separators; an empty
/// text has no item.
class VELMBASE_API FormatString {
public:
    /// With `mostItems`, from 1, the last of that many items is the whole rest of the text: for readers that
    /// know how many items they take, whatever they are given.
    FormatString(const std::wstring& text, wchar_t separator,
                 int mostItems = std::numeric_limits<int>::max());

    /// No items yet.
    explicit FormatString(wchar_t separator) : m_separator(separator) {}

    /// How many items there are, empty ones included.
    int NumItems() const { return static_cast<int>(m_items.size()); }

    /// The item at `index`, or an empty text when there is none.
    std::wstring operator[](int index) const { return Item(index); }

    /// The item without a copy; the reference holds until the items change.
    const std::wstring& Item(int index) const;

    /// Appends an item. A separator in it splits it when the text is read again.
    void AddItem(const std::wstring& item) { m_items.push_back(item); }

    /// Replaces the item at `index`; missing items before it become empty. A negative index changes nothing.
    void SetItem(int index, const std::wstring& item);

    /// Whether one of the items is exactly this text.
    bool HasSubString(const std::wstring& item) const;

    /// The items joined by the separator.
    std::wstring Text() const;

private:
    wchar_t m_separator;
    std::vector<std::wstring> m_items;
};
