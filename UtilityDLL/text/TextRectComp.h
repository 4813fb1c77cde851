// SPDX-License-Identifier: MIT
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

/// The rectangle that a piece of annotation text covers, in the unit of its size, turned clockwise by its
/// rotation and placed about the insertion point, which is the origin. docs/text-measurement.md has pictures.
///
/// Text is measured with the fonts of the display, each style's at the height that TextHeightFactComp finds
/// for it. A style that cannot be measured has a rectangle of no size at the origin: its font has no
/// outlines, its factor is not above 0, its size is 0, NaN or so large that the font's height in thousandths
/// does not fit into an int, or there is no display (Windows). A negative size counts as a positive one, a
/// rotation that is NaN or infinite as none.
///
/// A plain value. One thread at a time may measure, whatever the object (TextHeightFactComp).
class UTILITYDLL_API TextRectComp {
public:
    using Rectangle = GTL::Rectangle<GTL::Point2D<double>>; ///< of a text, about the insertion point

    /// No lines, and a text height of 0.
    TextRectComp() = default;

    /// The rectangle of a text, which ends at its first NUL; a null pointer is an empty text. The
    /// justification says which of its points is the insertion point, lower left where the number is none.
    ///
    /// The box of a line holds the font's cell; with a justification on the base line what is above that,
    /// without the internal leading. Parts of the cell are computed with 32 bits that wrap (HeightsFit): from
    /// a size on that depends on the font, 55 to 74 on the base line and 72 to 88 otherwise for those known,
    /// the height is defined, but no more the font's. So is the distance from line to line of a font whose
    /// external leading is large.
    ///
    /// Text whose style says so (MultiLine()) is divided into lines that fit RectWidth():
    ///   - CR LF, LF and CR end a line, and what is behind the last of them is a line, too.
    ///   - Lines that are too wide are broken at blanks, which are dropped there. Blanks are spaces of every
    ///     width and tabs, but not the no-break ones; a tab is measured as the font has it.
    ///   - Words that are too wide are broken between characters, as readers see them: not before a mark,
    ///     in a surrogate pair or where characters are joined. So is text without blanks, as Chinese is.
    ///   - No line is wider than RectWidth(), but one of a single character can be. A width that is not above
    ///     0 wraps nothing.
    ///
    /// The rectangle is as wide as the widest line. A line is as high as a single one, and from one to the
    /// next it is the font's cell and external leading: a justification on the base line means the last
    /// one's.
    ///
    /// An empty text has a rectangle of no size at the origin, and leaves the lines and the height alone. A
    /// style that cannot be measured leaves no line, and the height alone.
    /// @{
    Rectangle operator()(const TextInfo& info, const wchar_t* text);
    Rectangle operator()(const TextInfo& info, const std::wstring& text);
    /// @}

    /// The rectangle of a text; the number does not count.
    /// @{
    Rectangle operator()(const TextInfo& info, const wchar_t* text, double);
    Rectangle operator()(const TextInfo& info, const std::wstring& text, double);
    /// @}

    /// A depth label: the whole part of the number with its sign, and the decimals, each with the rectangle
    /// that its text covers. DepthLabelInfo says how the number is written and how the two are laid out; both
    /// are turned by its rotation about the position, which is the origin. Labels are of one line always.
    ///
    /// With DepthLabelInfo::IN_LINE and WHOLE_LABEL the number is one text, which comes first. Without
    /// decimals, too, the second rectangle and text are empty. Each of the two is measured at its own size:
    /// at the smallest sizes decimals have no size beside a whole part, and above the largest one the other
    /// way round.
    std::pair<std::pair<Rectangle, std::wstring>, std::pair<Rectangle, std::wstring>>
    operator()(const DepthLabelInfo& info, double value);

    /// Whether the number that the label shows for the value is of something that dries: negative, or
    /// positive where the sign is inverted, and not zero as it is shown. Where
    /// info.GetUnderlineDryingHeights() is set, hosts underline the first text then. It measures the same.
    static bool IsDryingHeight(const DepthLabelInfo& info, double value);

    /// Whether the parts of the cell that count for such a text fit into 32 bits, so that its heights are the
    /// font's. Also true for a style that cannot be measured.
    static bool HeightsFit(const TextInfo& info);

    /// How many lines the text has that was measured last; of a depth label its first text.
    int GetNumberOfSubStrings() const { return static_cast<int>(m_subStrings.size()); }

    /// A line of the text that was measured last, from 0; empty when there is none of that index.
    std::wstring GetSubString(int index) const;

    /// Copies a line, if it is there. Always false: callers look at the number of lines.
    bool GetSubString(int index, std::wstring& out) const;

    /// The height of a line of the text that was measured last. For a single line it is as the device gave
    /// it, to whole pixels of the display on Windows, and so can differ a little from the rectangle's. For
    /// multi-line text it is the distance from line to line in the rectangle.
    double GetTextHeight() const { return m_textHeight; }

private:
    GTL::Vector2D<double> GetTextExtents(const TextInfo& info, const wchar_t* text, bool smaller);
    GTL::Vector2D<double> GetMTextExtents(const TextInfo& info, const wchar_t* text);
    void OffsetLabels(const DepthLabelInfo& info, Rectangle& whole, Rectangle& decimals) const;

    std::vector<std::wstring> m_subStrings;
    double m_textHeight = 0.0;
};
