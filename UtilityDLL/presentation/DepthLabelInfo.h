// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/presentation/TextInfo.h"

/// How the depth numbers on a chart are written: a text style, the number's format and the label's layout.
///
/// The number (12.34) has Precision() decimals, and a sign only where it is negative as it is shown. It is
/// rounded up, for depths that count downward: a label shows no less depth than there is. Where the sign is
/// inverted it is rounded down, which is the same for depths that are negative. To be exact, 0.499999999999
/// of the last decimal's unit is added or subtracted, and the sum is rounded; a value that has no more
/// decimals stays as it is. It has a point in every locale. For what is no number it is "nan", "inf" or
/// "-inf".
///
/// The layout is made by TextRectComp; docs/text-measurement.md shows its nine combinations. A label is kept
/// in its one-line form alone, not in sections.
class UTILITYDLL_API DepthLabelInfo : public TextInfo {
public:
    /// How the decimals look.
    enum PRESENTATION : std::int32_t {
        IN_LINE,          ///< as the whole part, with the point before them
        SMALL_DECIMALS,   ///< two thirds in size and without the point, on the same base line
        LOWERED_DECIMALS, ///< the same, lowered by a third of the text's size, as charts print soundings
    };

    /// What of the label stands on its position. Other numbers, as of PRESENTATION, count as 0.
    enum PLACEMENT : std::int32_t {
        DECIMAL_POINT, ///< the seam of whole part and decimals; in height, the whole part's justification
        WHOLE_PART,    ///< the centre of the whole part, whatever the justification
        WHOLE_LABEL,   ///< the box round the whole label, by its justification (a base line is the whole
                       ///< part's); IN_LINE the label is one text
    };

    /// TextInfo's defaults, two decimals in line with the decimal point on the position, in the text's
    /// colour, and rotated by hosts.
    DepthLabelInfo() = default;

    /// This text style, and the defaults for the rest. To give a label another text style and keep the rest,
    /// assign to the text part: `static_cast<TextInfo&>(label) = text`.
    explicit DepthLabelInfo(const TextInfo& text) : TextInfo(text) {}

    int Precision() const { return m_precision; } ///< decimals; below 0 is 0 and above 300 is 300
    PRESENTATION Presentation() const { return m_presentation; } ///< how the decimals look
    PLACEMENT Placement() const { return m_placement; }          ///< what stands on the position
    bool UseTextColor() const { return m_useTextColor; }         ///< draw in the text's colour
    bool AutoTextRotation() const { return m_autoTextRotation; } ///< hosts rotate the label by themselves

    /// Whether the numbers of heights above the water are underlined.
    bool GetUnderlineDryingHeights() const { return m_underlineDryingHeights; }
    bool GetNoDecimalZeros() const { return m_noDecimalZeros; } ///< no decimals when they are all zeros
    bool GetSignIsInverted() const { return m_signIsInverted; } ///< depths are negative

    /// All are stored as given.
    /// @{
    void SetPrecision(int precision) { m_precision = precision; }
    void SetPresentation(PRESENTATION presentation) { m_presentation = presentation; }
    void SetPlacement(PLACEMENT placement) { m_placement = placement; }
    void UseTextColor(bool use) { m_useTextColor = use; }
    void AutoTextRotation(bool rotate) { m_autoTextRotation = rotate; }
    void SetUnderlineDryingHeights(bool underline) { m_underlineDryingHeights = underline; }
    void SetNoDecimalZeros(bool noZeros) { m_noDecimalZeros = noZeros; }
    void SetSignIsInverted(bool inverted) { m_signIsInverted = inverted; }
    /// @}

    /// As TextInfo's, and exact in the rest. GetSignIsInverted() does not count. A label and a text style are
    /// compared as text styles.
    bool operator==(const DepthLabelInfo& other) const;

    /// The text style's line and behind it
    /// ",precision,presentation,placement,textcolor,autorotation,underline,nozeros", as in
    /// "Arial,2.5,0,0,0,0,0,0,0,0,2,0,0,1,1,0,0". GetSignIsInverted() is not written.
    std::wstring ToString() const;

    /// The names of that line's items, in its order: the text style's and behind them the label's.
    static std::vector<std::wstring> OneLineItems();

    /// Resets to the defaults and reads the items that the line has. Fourteen items are the older form
    /// without the true colour and the last two flags. A presentation or placement out of range keeps its
    /// default.
    void FromString(const std::wstring& line);

protected:
    using TextInfo::FromString; // the reading of split items, which the above would hide

private:
    // A section keeps a text style only: the label's part would be lost unnoticed.
    using TextInfo::Read;
    using TextInfo::Write;

    template <typename Items> void ListItems(Items& items) const;

    int m_precision = 2;
    PRESENTATION m_presentation = IN_LINE;
    PLACEMENT m_placement = DECIMAL_POINT;
    bool m_useTextColor = true;
    bool m_autoTextRotation = true;
    bool m_underlineDryingHeights = false;
    bool m_noDecimalZeros = false;
    bool m_signIsInverted = false;
};
