// SPDX-License-Identifier: MIT
#include "VelmBase/FormatString.h"

#include <algorithm>
#include <utility>

FormatString::FormatString(const std::wstring& text, wchar_t separator, int mostItems)
    : m_separator(separator) {
    if (text.empty()) return;
    const auto separators = static_cast<std::size_t>(std::count(text.begin(), text.end(), separator));
    const std::size_t numItems = std::min(separators + 1, static_cast<std::size_t>(std::max(mostItems, 1)));
    m_items.reserve(numItems);
    std::size_t begin = 0;
    while (m_items.size() + 1 < numItems) {
        const std::size_t end = text.find(separator, begin);
        m_items.emplace_back(text, begin, end - begin);
        begin = end + 1;
    }
    m_items.emplace_back(text, begin);
}

const std::wstring& FormatString::Item(int index) const {
    static const std::wstring none;
    return index >= 0 && index < NumItems() ? m_items[static_cast<std::size_t>(index)] : none;
}

void FormatString::SetItem(int index, const std::wstring& item) {
    if (index < 0) return;
    std::wstring text = item; // it may be one of the items, which move
    if (index >= NumItems()) m_items.resize(static_cast<std::size_t>(index) + 1);
    m_items[static_cast<std::size_t>(index)] = std::move(text);
}

bool FormatString::HasSubString(const std::wstring& item) const {
    return std::find(m_items.begin(), m_items.end(), item) != m_items.end();
}

std::wstring FormatString::Text() const {
    std::wstring text;
    for (std::size_t i = 0; i < m_items.size(); ++i) {
        if (i > 0) text += m_separator;
        text += m_items[i];
    }
    return text;
}
