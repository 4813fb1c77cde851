// SPDX-License-Identifier: MIT
#include "UtilityDLL/text/private/LineDivision.h"

#include "UtilityDLL/text/private/Character.h"

#include <algorithm>
#include <cstddef>

namespace {

class Wrapping {
public:
    Wrapping(double width, const TextWidth& measure) : m_width(width), m_measure(measure) {}

    // The lines of a text without line breaks: one at least.
    void Append(std::wstring_view text, std::vector<std::wstring_view>& lines) {
        const std::size_t before = lines.size();
        m_text = text;
        while (!m_text.empty()) {
            const std::size_t end = LineEnd();
            if (end > 0) lines.push_back(m_text.substr(0, end));
            m_text.remove_prefix(end);
            while (!m_text.empty() && IsBlank(m_text[0]) && CharacterEnd(m_text, 0) == 1)
                m_text.remove_prefix(1);
        }
        if (lines.size() == before) lines.push_back(m_text);
    }

private:
    // Where the line with which the text begins ends; 0 where blanks at the beginning must go first.
    std::size_t LineEnd() {
        const std::size_t fitting = CountFitting();
        if (fitting > 0 && m_ends[fitting - 1] == m_text.size()) return m_text.size();
        for (std::size_t count = fitting; count > 0; --count)
            if (IsBlankCharacter(count) && !IsBlankCharacter(count - 1) && Fits(count))
                return m_ends[count - 1];
        if (IsBlankCharacter(0)) return 0;
        return m_ends[std::max<std::size_t>(fitting, 1) - 1];
    }

    // How many of the first characters fit. Of one more than these the end is known as well, if there is one.
    std::size_t CountFitting() {
        m_ends.clear();
        std::size_t fitting = 0;
        std::size_t tooMany = 1;
        while (KnowsEnds(tooMany) && Fits(tooMany)) {
            fitting = tooMany;
            tooMany *= 2;
        }
        if (m_ends.size() < tooMany) {
            tooMany = m_ends.size();
            if (fitting == tooMany || Fits(tooMany)) return tooMany;
        }
        while (tooMany - fitting > 1) {
            const std::size_t middle = fitting + (tooMany - fitting) / 2;
            (Fits(middle) ? fitting : tooMany) = middle;
        }
        return fitting;
    }

    bool KnowsEnds(std::size_t count) {
        while (m_ends.size() < count) {
            const std::size_t begin = m_ends.empty() ? 0 : m_ends.back();
            if (begin == m_text.size()) return false;
            m_ends.push_back(CharacterEnd(m_text, begin));
        }
        return true;
    }

    bool Fits(std::size_t count) const { return m_measure(m_text.substr(0, m_ends[count - 1])) <= m_width; }

    bool IsBlankCharacter(std::size_t index) const {
        const std::size_t begin = index == 0 ? 0 : m_ends[index - 1];
        return m_ends[index] == begin + 1 && IsBlank(m_text[begin]);
    }

    std::wstring_view m_text;        // what is not in a line yet
    std::vector<std::size_t> m_ends; // of its first characters
    double m_width;
    const TextWidth& m_measure;
};

} // namespace

std::vector<std::wstring_view> DivideIntoLines(std::wstring_view text, double width,
                                               const TextWidth& measure) {
    std::vector<std::wstring_view> lines;
    Wrapping wrapping(width, measure);
    while (true) {
        const std::size_t end = std::min(text.find_first_of(L"\r\n"), text.size());
        if (width > 0)
            wrapping.Append(text.substr(0, end), lines);
        else
            lines.push_back(text.substr(0, end));
        if (end == text.size()) return lines;
        text.remove_prefix(end + (text.substr(end, 2) == L"\r\n" ? 2 : 1));
    }
}
