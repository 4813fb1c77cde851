// SPDX-License-Identifier: MIT
#include "VelmBase/ColorTable.h"

#include "VelmBase/FormatString.h"
#include "VelmBase/Math.h"
#include "VelmBase/NumberText.h"
#include "VelmBase/WideString.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

namespace {

constexpr wchar_t kSection[] = L"ColorTable";
constexpr wchar_t kDefaultColor[] = L"DefaultColor";
constexpr wchar_t kEntry[] = L"Entry(";
constexpr wchar_t kSeparator = L',';
constexpr int kItemsOfEntry = 4;

// The order of values: NaN is behind every number.
bool IsBelow(double a, double b) { return std::isnan(b) ? !std::isnan(a) : a < b; }

// The values that are written as words.
struct NamedValue {
    const wchar_t* name;
    double value;
};
constexpr NamedValue kNamedValues[] = {
    {L"inf", std::numeric_limits<double>::infinity()},
    {L"-inf", -std::numeric_limits<double>::infinity()},
    {L"nan", std::numeric_limits<double>::quiet_NaN()},
};

std::wstring ValueText(double value) {
    for (const NamedValue& named : kNamedValues)
        if (named.value == value || (std::isnan(named.value) && std::isnan(value))) return named.name;
    // At least 15 digits, where trailing zeros are dropped anyway: with fewer, 10 would be written as 1e+01.
    return NumberText::FromGeneral(value, std::max(15, GetDoublePrecision(value)));
}

bool ReadValue(std::wstring_view text, double& value) {
    text = TrimmedW(text);
    for (const NamedValue& named : kNamedValues) {
        if (!icompareW(text, named.name)) continue;
        value = named.value;
        return true;
    }
    return NumberText::IsDecimal(text) && NumberText::Extract(text, value);
}

void AppendColor(FormatString& items, unsigned long color) {
    for (int shift = 0; shift < 24; shift += 8)
        items.AddItem(NumberText::FromInteger(static_cast<unsigned long long>(color >> shift & 0xFF)));
}

// Red, green and blue from the item `first` on.
bool ReadColor(const FormatString& items, int first, unsigned long& color) {
    color = 0;
    for (int i = 0; i < 3; ++i) {
        const std::wstring& item = items.Item(first + i);
        int component = 0;
        if (!NumberText::IsInteger(item) || !NumberText::Extract(item, component) || component < 0 ||
            component > 255)
            return false;
        color |= static_cast<unsigned long>(component) << (8 * i);
    }
    return items.NumItems() == first + 3;
}

// A piece of a file in a message: what is wrong shows at its start.
std::wstring Quoted(const std::wstring& text) {
    constexpr std::size_t kLongest = 60;
    return L"\"" + (text.size() > kLongest ? text.substr(0, kLongest) + L"..." : text) + L"\"";
}

bool IsEntryKey(std::wstring_view key) {
    const std::wstring_view prefix(kEntry);
    return key.size() > prefix.size() && icompareW(key.substr(0, prefix.size()), prefix);
}

} // namespace

// Exported, for hosts that bind a reference to it.
constexpr std::size_t ColorTable::MAX_REMARKS; // NOLINT(readability-redundant-declaration)

void ColorTable::AddEntry(double value, unsigned long color) {
    MakeRoom();
    const auto place = std::upper_bound(m_values.begin(), m_values.end(), value, IsBelow);
    m_colors.insert(m_colors.begin() + (place - m_values.begin()),
                    static_cast<std::uint32_t>(color & COLOR_BITS));
    m_values.insert(place, value);
}

void ColorTable::SetEntryColor(int index, unsigned long color) {
    m_colors[static_cast<std::size_t>(index)] = static_cast<std::uint32_t>(color & COLOR_BITS);
}

bool ColorTable::FileOpen(const FileObject& file, std::vector<std::wstring>* remarks) {
    const auto remark = [remarks](const std::wstring& text) {
        if (remarks && remarks->size() < MAX_REMARKS) remarks->push_back(text);
    };
    *this = ColorTable();
    const FobjSection* const section = file.GetSection(kSection);
    if (!section) {
        remark(L"there is no section [" + std::wstring(kSection) + L"]");
        return false;
    }

    bool complete = true;
    const auto fault = [&](const std::wstring& text) {
        complete = false;
        remark(text);
    };
    bool isSorted = true;
    std::wstring key;
    std::wstring text;
    int position = 0;
    for (bool more = section->GetFirstMapEntry(position, key, text); more;
         more = section->GetNextMapEntry(position, key, text)) {
        const FormatString items(text, kSeparator, kItemsOfEntry + 1);
        unsigned long color = 0;
        if (icompareW(key, kDefaultColor)) {
            if (ReadColor(items, 0, color))
                SetDefaultColor(color);
            else
                fault(key + L": " + Quoted(text) + L" is not red,green,blue from 0 to 255; black is taken");
        } else if (IsEntryKey(key)) {
            double value = 0.0;
            if (!ReadValue(items.Item(0), value)) {
                fault(key + L": " + Quoted(items.Item(0)) + L" is not a number; the entry is left out");
            } else if (!ReadColor(items, 1, color)) {
                fault(key + L": " + Quoted(text) +
                      L" is not value,red,green,blue with colours from 0 to 255; the entry is left out");
            } else {
                if (!m_values.empty() && IsBelow(value, m_values.back())) {
                    isSorted = false;
                    remark(key + L": the value is below the one before; the entries are sorted");
                }
                MakeRoom();
                m_values.push_back(value);
                m_colors.push_back(static_cast<std::uint32_t>(color));
            }
        }
    }
    if (!isSorted) Sort();
    for (std::size_t i = 1; i < m_values.size(); ++i)
        if (m_values[i] == m_values[i - 1])
            remark(L"the value " + ValueText(m_values[i]) + L" is there twice; both entries are kept");
    return complete;
}

bool ColorTable::FileSave(FileObject& file) const {
    if (file.GetSection(kSection)) return false;
    FormatString color(kSeparator);
    AppendColor(color, m_defaultColor);
    file.SetItem(kSection, kDefaultColor, color.Text(), true);
    for (int i = 0; i < NumEntries(); ++i) {
        FormatString entry(kSeparator);
        entry.AddItem(ValueText(EntryValue(i)));
        AppendColor(entry, EntryColor(i));
        file.SetItem(kSection, kEntry + std::to_wstring(i) + L")", entry.Text(), true);
    }
    return true;
}

void ColorTable::MakeRoom() {
    if (m_values.size() == m_values.capacity()) m_values.reserve(2 * m_values.size() + 8);
    if (m_colors.size() == m_colors.capacity()) m_colors.reserve(2 * m_colors.size() + 8);
}

void ColorTable::Sort() {
    std::vector<std::size_t> order(m_values.size());
    std::iota(order.begin(), order.end(), std::size_t(0));
    std::stable_sort(order.begin(), order.end(),
                     [this](std::size_t a, std::size_t b) { return IsBelow(m_values[a], m_values[b]); });
    ColorTable sorted;
    sorted.m_defaultColor = m_defaultColor;
    for (const std::size_t i : order) {
        sorted.MakeRoom();
        sorted.m_values.push_back(m_values[i]);
        sorted.m_colors.push_back(m_colors[i]);
    }
    *this = std::move(sorted);
}

void ColorTable::MergeEqualColors() {
    std::size_t kept = 0;
    for (std::size_t i = 0; i < m_values.size(); ++i) {
        if (kept > 0 && m_colors[kept - 1] == m_colors[i]) continue;
        m_values[kept] = m_values[i];
        m_colors[kept] = m_colors[i];
        ++kept;
    }
    m_values.resize(kept);
    m_colors.resize(kept);
}
