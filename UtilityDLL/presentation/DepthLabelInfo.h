#pragma once

#include "UtilityDLL/presentation/TextInfo.h"

/// How the depth numbers on a chart are written: a text style, the number's format and the label's layout.
///
/// It is kept in its one-line form alone, not in sections.
class UTILITYDLL_API DepthLabelInfo : public TextInfo {
public:
    /// How a label is presented and where it is placed. What the values draw is up to the layout of depth
    /// labels, which keeps a number in one piece at IN_LINE with WHOLE_LABEL and otherwise splits it
    /// at its point.
    enum PRESENTATION : std::int32_t { IN_LINE, SMALL_DECIMALS, LOWERED_DECIMALS };
    enum PLACEMENT : std::int32_t { DECIMAL_POINT, WHOLE_PART, WHOLE_LABEL };

    DepthLabelInfo() = default;

    /// This text style, and the defaults for the rest. To give a label another text style and keep the rest,
    /// assign to the text part: `static_cast<TextInfo&>(label) = text`.
    explicit DepthLabelInfo(const TextInfo& text) : TextInfo(text) {}

    int Precision() const { return m_precision; } ///< decimal places
    PRESENTATION Presentation() const { return m_presentation; }
    PLACEMENT Placement() const { return m_placement; }
    bool UseTextColor() const { return m_useTextColor; }         ///< draw in the text's colour
    bool AutoTextRotation() const { return m_autoTextRotation; } ///< rotate the label automatically
    bool GetUnderlineDryingHeights() const { return m_underlineDryingHeights; }
    bool GetNoDecimalZeros() const { return m_noDecimalZeros; } ///< leave out trailing zeros
    bool GetSignIsInverted() const { return m_signIsInverted; } ///< depths are signed the other way

    /// All are stored as given.
    void SetPrecision(int precision) { m_precision = precision; }
    void SetPresentation(PRESENTATION presentation) { m_presentation = presentation; }
    void SetPlacement(PLACEMENT placement) { m_placement = placement; }
    void UseTextColor(bool use) { m_useTextColor = use; }
    void AutoTextRotation(bool rotate) { m_autoTextRotation = rotate; }
    void SetUnderlineDryingHeights(bool underline) { m_underlineDryingHeights = underline; }
    void SetNoDecimalZeros(bool noZeros) { m_noDecimalZeros = noZeros; }
    void SetSignIsInverted(bool inverted) { m_signIsInverted = inverted; }

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
