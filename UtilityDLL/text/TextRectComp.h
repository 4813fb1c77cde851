#pragma once

#include "UtilityDLL/Export.h"
#include "UtilityDLL/GTL/Point2D.h"
#include "UtilityDLL/GTL/Rectangle.h"
#include "UtilityDLL/GTL/Vector2D.h"
#include "UtilityDLL/presentation/DepthLabelInfo.h"
#include "UtilityDLL/presentation/TextInfo.h"

#include <string>
#include <utility>
#include <vector>

/// The rectangle that a piece of annotation text covers, in the unit of its size, turned and placed about the
/// insertion point, which is the origin. It is measured with the fonts of the display (TextHeightFactComp).
class UTILITYDLL_API TextRectComp {
public:
    using Rectangle = GTL::Rectangle<GTL::Point2D<double>>;

    TextRectComp() = default;

    Rectangle operator()(const TextInfo& info, const wchar_t* text);
    Rectangle operator()(const TextInfo& info, const std::wstring& text);

    /// The same; the number does not count.
    Rectangle operator()(const TextInfo& info, const wchar_t* text, double);
    Rectangle operator()(const TextInfo& info, const std::wstring& text, double);

    /// The two parts of a depth label, each with its text.
    std::pair<std::pair<Rectangle, std::wstring>, std::pair<Rectangle, std::wstring>>
    operator()(const DepthLabelInfo& info, double value);

    /// The lines of the text that was measured last.
    int GetNumberOfSubStrings() const { return static_cast<int>(m_subStrings.size()); }

    /// One of them; empty when there is none of that index.
    std::wstring GetSubString(int index) const;

    /// Copies one of them, if it is there. Always false: callers look at the number of lines.
    bool GetSubString(int index, std::wstring& out) const;

    /// The height of a line of the text that was measured last.
    double GetTextHeight() const { return m_textHeight; }

private:
    GTL::Vector2D<double> GetTextExtents(const TextInfo& info, const wchar_t* text, bool smaller);
    GTL::Vector2D<double> GetMTextExtents(const TextInfo& info, const wchar_t* text);
    void OffsetLabels(const DepthLabelInfo& info, Rectangle& whole, Rectangle& decimals) const;

    std::vector<std::wstring> m_subStrings;
    double m_textHeight = 0.0;
};
