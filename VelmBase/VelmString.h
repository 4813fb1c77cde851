// SPDX-License-Identifier: MIT
#pragma once

#include "VelmBase/Export.h"
#include "VelmBase/FormatString.h"

#include <concepts>
#include <limits>
#include <string>

/// A text of items at a separator whose items are also read and written as numbers. Splits as FormatString.
class VELMBASE_API CVelmString {
public:
    /// As FormatString's: the text's items, of which the last of `mostItems` is the whole rest, or none.
    /// @{
    CVelmString(const std::wstring& text, wchar_t separator, int mostItems = std::numeric_limits<int>::max())
        : m_items(text, separator, mostItems) {}
    explicit CVelmString(wchar_t separator) : m_items(separator) {}
    /// @}

    /// How many items there are, empty ones included.
    int NumItems() const { return m_items.NumItems(); }

    /// The item at `index`, or an empty text when there is none.
    std::wstring GetItem(int index) const { return m_items.Item(index); }

    /// Reads the item as a number, independent of the locale. False when it is missing or does not begin with
    /// a number; `value` is then left alone. A number out of range becomes the nearest limit. A bool is false
    /// for 0 and true for any other number.
    /// @{
    bool GetItem(int index, float& value) const;
    bool GetItem(int index, int& value) const;
    bool GetItem(int index, bool& value) const;
    /// @}

    /// Replaces the item at `index`; missing items before it become empty. A negative index changes nothing.
    void SetItem(int index, const std::wstring& item) { m_items.SetItem(index, item); }

    /// Appends an item. A separator in it splits it when the text is read again.
    /// @{
    void AddItem(const std::wstring& item) { m_items.AddItem(item); }
    void AddItem(const wchar_t* item) { m_items.AddItem(item); }
    /// @}

    /// Appends a number: an integer with all digits, a float with six significant ones, as a wide stream
    /// writes it by default.
    /// @{
    void AddItem(float value);
    void AddItem(int value);
    void AddItem(unsigned long value);
    /// @}

    /// Appends 1 or 0. Nothing else passes for a bool.
    template <std::same_as<bool> Bool> void AddItem(Bool value) { AddItem(value ? L"1" : L"0"); }

    /// The items joined by the separator.
    std::wstring Text() const { return m_items.Text(); }

private:
    FormatString m_items;
};
