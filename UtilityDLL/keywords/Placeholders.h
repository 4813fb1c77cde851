// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstddef>
#include <cwchar>
#include <string>
#include <string_view>

/// Walks over the placeholders of a text: names between percent signs. A "%%" is no placeholder, and neither
/// is one without an end.
///
/// A line break or NUL ends a placeholder without taking its name, but the characters met so far are kept and
/// stand at the front of the next name: existing layouts rely on names that were wrapped.
class Placeholders {
public:
    /// `text` must outlive the walk.
    explicit Placeholders(std::wstring_view text) : m_text(text) {}

    /// Goes to the next placeholder; false when there is none.
    bool Next() {
        m_name = {};
        m_wrapped.clear();
        while (FindPercent()) {
            m_begin = m_end;
            const std::size_t first = m_begin + 1;
            m_end =
                std::find_if(m_text.begin() + static_cast<std::ptrdiff_t>(first), m_text.end(), EndsName) -
                m_text.begin();
            if (m_end == m_text.size()) break;
            const std::wstring_view collected = m_text.substr(first, m_end - first);
            if (m_text[m_end++] != L'%') {
                m_carried += collected;
            } else if (!collected.empty()) {
                TakeName(collected);
                return true;
            }
        }
        m_end = m_text.size();
        return false;
    }

    /// The name, without percent signs; holds until the next call of Next().
    std::wstring_view Name() const { return m_name; }

    /// Where the placeholder begins and where the text goes on behind it, both percent signs included. Of a
    /// wrapped one this is the last piece.
    /// @{
    std::size_t Begin() const { return m_begin; }
    std::size_t End() const { return m_end; }
    /// @}

    /// Whether the name begins with characters of earlier lines.
    bool IsWrapped() const { return !m_wrapped.empty(); }

private:
    static bool EndsName(wchar_t c) { return c == L'%' || c == L'\n' || c == L'\r' || c == L'\0'; }

    bool FindPercent() {
        const wchar_t* const found = m_end < m_text.size()
                                         ? std::wmemchr(m_text.data() + m_end, L'%', m_text.size() - m_end)
                                         : nullptr;
        if (found) m_end = static_cast<std::size_t>(found - m_text.data());
        return found != nullptr;
    }

    void TakeName(std::wstring_view collected) {
        m_name = collected;
        if (m_carried.empty()) return;
        m_wrapped.swap(m_carried);
        m_wrapped += collected;
        m_name = m_wrapped;
    }

    std::wstring_view m_text;
    std::size_t m_begin = 0;
    std::size_t m_end = 0; // where the search goes on
    std::wstring m_carried;
    std::wstring m_wrapped;
    std::wstring_view m_name;
};
