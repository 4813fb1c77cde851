// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/Export.h"
#include "UtilityDLL/settings/Section.h"

/// How an electronic chart layer is displayed. What the numbers mean is up to the chart clients.
class UTILITYDLL_API CMapInfo {
public:
    /// The numbers of the chart clients, and what is shown. At first 0, 0 and 2; generic text, contours and
    /// boundaries are shown, and clutter is avoided.
    /// @{
    int SymbolizationType() const { return m_symbolizationType; }
    int ScaleLevel() const { return m_scaleLevel; }
    int DisplayType() const { return m_displayType; }
    bool TextGeneric() const { return m_textGeneric; }
    bool TextOther() const { return m_textOther; }
    bool ChartContour() const { return m_chartContour; }
    bool LightsInfo() const { return m_lightsInfo; }
    bool AntiCluttering() const { return m_antiCluttering; }
    bool Boundaries() const { return m_boundaries; }
    /// @}

    /// All are stored as given.
    /// @{
    void SetSymbolizationType(int type) { m_symbolizationType = type; }
    void SetScaleLevel(int level) { m_scaleLevel = level; }
    void SetDisplayType(int type) { m_displayType = type; }
    void SetTextGeneric(bool show) { m_textGeneric = show; }
    void SetTextOther(bool show) { m_textOther = show; }
    void SetChartContour(bool show) { m_chartContour = show; }
    void SetLightsInfo(bool show) { m_lightsInfo = show; }
    void SetAntiCluttering(bool enable) { m_antiCluttering = enable; }
    void SetBoundaries(bool show) { m_boundaries = show; }
    /// @}

    /// Exact.
    bool operator==(const CMapInfo& other) const = default;

    /// Keys: SymbolizationType, ScaleLevel, DisplayType, ShowTextGeneric, ShowTextOther, ShowChartContour,
    /// ShowLightsInfo, AntiCluttering, ShowBoundaries. Always true. Fields keep their values where their key
    /// is missing.
    /// @{
    bool Read(const Section& section);
    bool Write(Section& section) const;
    /// @}

private:
    template <typename Exchange, typename Record> static bool Fields(Exchange field, Record& record);

    int m_symbolizationType = 0;
    int m_scaleLevel = 0;
    int m_displayType = 2;
    bool m_textGeneric = true;
    bool m_textOther = false;
    bool m_chartContour = true;
    bool m_lightsInfo = false;
    bool m_antiCluttering = true;
    bool m_boundaries = true;
};
