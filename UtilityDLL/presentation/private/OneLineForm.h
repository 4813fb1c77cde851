#pragma once

#include "VelmBase/FormatString.h"
#include "VelmBase/NumberText.h"
#include "VelmBase/WideString.h"

#include <string>
#include <string_view>

// The one-line forms of records: items with a comma between them, without quotes. Numbers
// are as a wide stream of the "C" locale writes them by default.
//
// This header is the library's own and is not for hosts.

/// Composes a line.
class OneLineForm {
public:
    explicit OneLineForm(const std::wstring& first) : m_text(first) { m_text.reserve(first.size() + 64); }
    explicit OneLineForm(float first) : OneLineForm(NumberText::FromGeneral(static_cast<double>(first))) {}

    void Add(std::wstring_view item) { (m_text += L',') += item; }
    void Add(const std::wstring& item) { Add(std::wstring_view(item)); }
    void Add(bool item) { Add(std::wstring_view(item ? L"1" : L"0", 1)); }
    void Add(double item) { Add(NumberText::FromGeneral(item)); }
    void Add(float item) { Add(static_cast<double>(item)); }
    void Add(int item) { Add(NumberText::FromInteger(static_cast<long long>(item))); }
    void Add(unsigned long item) { Add(NumberText::FromInteger(static_cast<unsigned long long>(item))); }

    const std::wstring& Text() const { return m_text; }

private:
    std::wstring m_text;
};

/// How many items of a line are told apart. The library's records have at most 17 and leave the rest to a
/// host's own; what is behind these is no record's any more, and is not split.
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
