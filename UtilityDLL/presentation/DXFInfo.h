// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/Export.h"
#include "UtilityDLL/settings/Section.h"

#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

/// How a line is drawn when the drawing is exported as DXF. All fields are 0 by default. The width is in the
/// drawing's unit.
class UTILITYDLL_API DXFInfo {
public:
    float Width() const { return m_width; }         ///< in the drawing's unit
    unsigned long Color() const { return m_color; } ///< a colour reference
    int ColorMode() const { return m_colorMode; }   ///< how the exporter colours the line; its own number

    /// Stores the absolute value.
    void SetWidth(float width) { m_width = std::fabs(width); }

    /// Stored as given; of a colour 32 bits.
    /// @{
    void SetColor(unsigned long color) { m_color = static_cast<std::uint32_t>(color); }
    void SetColorMode(int colorMode) { m_colorMode = colorMode; }
    /// @}

    /// Exact.
    bool operator==(const DXFInfo& other) const = default;

    /// Keys: DXFLineColor (DXF index), DXFLineTrueColor, DXFLineWidth, DXFColorMode. Always true. A missing
    /// DXFLineColor counts as index 0; the other fields keep their values where their key is missing.
    /// DXFLineTrueColor goes before DXFLineColor.
    /// @{
    bool Read(const Section& section);
    bool Write(Section& section) const;
    /// @}

    /// "width,index,mode,color", as in "0,0,0,0". A colour reference above 2147483647 comes back as
    /// 2147483647.
    std::wstring ToString() const;

    /// The names of that line's items, in its order; they are those of the keys.
    static std::vector<std::wstring> OneLineItems();

    /// Resets to the defaults and reads a line; one of fewer than three items gives the defaults. An item
    /// that is no number leaves its field alone. Without the fourth item the colour is the palette's of the
    /// index.
    void FromString(const std::wstring& line);

private:
    template <typename Exchange, typename Record> static bool Fields(Exchange field, Record& record);
    template <typename Items> void ListItems(Items& items) const;

    float m_width = 0.0f;
    unsigned long m_color = 0;
    int m_colorMode = 0;
};
