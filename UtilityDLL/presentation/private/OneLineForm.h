// SPDX-License-Identifier: MIT
#pragma once

#include "VelmBase/FormatString.h"
#include "VelmBase/NumberText.h"
#include "VelmBase/WideString.h"

#include <string>
#include <string_view>
#include <vector>

// The one-line forms of records: items with a comma between them, without quotes. Numbers are as a wide
// stream of the "C" locale writes them by default.
//
// A record lists its items once, in the order of the line, for whoever composes a line or asks for the names:
//
//     template <typename Items> void DXFInfo::ListItems(Items& items) const {
//         items.Add(L"DXFLineWidth", m_width);
//         items.Add(L"DXFLineColor", DXFColor(m_color).Index());
//     }

/// Composes a line.
class OneLineForm {
public:
    OneLineForm() { m_text.reserve(kUsualLength); }

    /// Goes on behind the items of `line`.
    explicit OneLineForm(const std::wstring& line) : m_hasItems(true) {
        m_text.reserve(line.size() + kUsualLength);
        m_text = line;
    }

    void Add(const wchar_t* /*name*/, std::wstring_view item) {
        if (m_hasItems) m_text += L',';
        m_hasItems = true;
        m_text += item;
    }
    void Add(const wchar_t* name, const std::wstring& item) { Add(name, std::wstring_view(item)); }
    void Add(const wchar_t* name, bool item) { Add(name, std::wstring_view(item ? L"1" : L"0", 1)); }
    void Add(const wchar_t* name, double item) { Add(name, NumberText::FromGeneral(item)); }
    void Add(const wchar_t* name, float item) { Add(name, static_cast<double>(item)); }
    void Add(const wchar_t* name, int item) {
        Add(name, NumberText::FromInteger(static_cast<long long>(item)));
    }
    void Add(const wchar_t* name, unsigned long item) {
        Add(name, NumberText::FromInteger(static_cast<unsigned long long>(item)));
    }

    const std::wstring& Text() const { return m_text; }

private:
    static constexpr std::size_t kUsualLength = 64;

    std::wstring m_text;
    bool m_hasItems = false;
};

/// Collects the names of the items instead.
class OneLineItemNames {
public:
    template <typename Item> void Add(const wchar_t* name, const Item& /*item*/) {
        m_names.emplace_back(name);
    }

    std::vector<std::wstring>& Names() { return m_names; }

private:
    std::vector<std::wstring> m_names;
};

/// How many items a line is split into. The library's records have at most 17 and leave the rest to a host's
/// own; what is behind these is no record's any more, and stays in one piece.
constexpr int kMostItems = 1000;

/// The items of a line.
inline FormatString SplitOneLineForm(const std::wstring& line) { return {line, L',', kMostItems}; }

/// Takes the item as the number of an enumeration. One that is missing or not below `count` leaves the field
/// alone.
template <typename Field>
void ReadNumberBelow(unsigned int count, const FormatString& items, int index, Field& field) {
    if (index >= items.NumItems()) return;
    const auto number = static_cast<unsigned int>(atoi(items.Item(index))); // negatives are out too
    if (number < count) field = static_cast<Field>(number);
}
