// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/Export.h"
#include "UtilityDLL/settings/Section.h"

#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

/// How a line is drawn on the screen and on a plot. The width is in the plot's unit.
class UTILITYDLL_API LineInfo {
public:
    /// How a line is interrupted; SOLID at first. Files have the names of STYLEDESCRIPTIONS.
    enum LINESTYLE : std::int32_t { SOLID, DASHED, DOT, DASH_DOT };

    /// The name of each style, by its value; files carry these.
    static const wchar_t* const STYLEDESCRIPTIONS[4];

    float Width() const { return m_width; }         ///< in the plot's unit; 0.1 at first
    unsigned long Color() const { return m_color; } ///< a colour reference
    LINESTYLE Style() const { return m_style; }     ///< how the line is interrupted
    bool Enable() const { return m_enable; }        ///< whether the line is drawn

    /// Stores the absolute value.
    void SetWidth(float width) { m_width = std::fabs(width); }

    /// Stored as given; of a colour 32 bits.
    /// @{
    void SetColor(unsigned long color) { m_color = static_cast<std::uint32_t>(color); }
    void SetStyle(LINESTYLE style) { m_style = style; }
    void SetEnable(bool enable) { m_enable = enable; }
    /// @}

    /// The style's name; empty for a value without one.
    std::wstring StyleStr() const;

    /// The style of that name, whatever its letter case; SOLID for any other text.
    void SetStyleStr(const std::wstring& text);

    /// Exact.
    bool operator==(const LineInfo& other) const = default;

    /// Keys: LineColor (DXF index), LineWidth, LineStyle (name), LineTrueColor, Enable. Always true. A
    /// missing LineColor counts as index 0 and an unknown or missing LineStyle as SOLID; the other fields
    /// keep their values where their key is missing. LineTrueColor goes before LineColor.
    /// @{
    bool Read(const Section& section);
    bool Write(Section& section) const;
    /// @}

    /// "width,index,style,color,enable", as in "0.1,0,Solid Line,0,1". A colour reference above 2147483647
    /// comes back as 2147483647.
    std::wstring ToString() const;

    /// The names of that line's items, in its order; they are those of the keys.
    static std::vector<std::wstring> OneLineItems();

    /// Resets to the defaults and reads a line; one of fewer than three items gives the defaults. An item
    /// that is no number leaves its field alone. Without the fourth item the index stays as it is, as the
    /// colour reference: it is not looked up in the palette.
    void FromString(const std::wstring& line);

private:
    template <typename Exchange, typename Record> static bool Fields(Exchange field, Record& record);
    template <typename Items> void ListItems(Items& items) const;

    float m_width = 0.1f;
    unsigned long m_color = 0;
    LINESTYLE m_style = SOLID;
    bool m_enable = true;
};
