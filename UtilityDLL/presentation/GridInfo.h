// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/Export.h"
#include "UtilityDLL/settings/Section.h"

#include <cstdint>
#include <string>

/// The grid of eastings and northings on a chart: its intervals, what of it is drawn, and the texts that mark
/// its labels. Intervals are in the unit of the coordinates, ticks in that of the plot.
class UTILITYDLL_API GridInfo {
public:
    /// What of the grid is drawn: a set of these flags.
    enum GRIDSTYLE : std::uint32_t {
        POINTS = 1,           ///< crosses where eastings and northings meet
        X_LINES = 2,          ///< lines of equal easting
        Y_LINES = 4,          ///< lines of equal northing
        X_TICKS = 8,          ///< ticks at the eastings
        Y_TICKS = 16,         ///< ticks at the northings
        X_MINORTICKS = 32,    ///< ticks that divide an x interval
        Y_MINORTICKS = 64,    ///< ticks that divide a y interval
        LONG_NORTHTICK = 128, ///< the tick that points north is longer
    };

    /// Sets of flags, combined bit by bit.
    /// @{
    friend constexpr GRIDSTYLE operator|(GRIDSTYLE a, GRIDSTYLE b) { return GRIDSTYLE(+a | +b); }
    friend constexpr GRIDSTYLE operator&(GRIDSTYLE a, GRIDSTYLE b) { return GRIDSTYLE(+a & +b); }
    friend constexpr GRIDSTYLE operator~(GRIDSTYLE a) { return GRIDSTYLE(~+a); }
    friend constexpr GRIDSTYLE& operator|=(GRIDSTYLE& a, GRIDSTYLE b) { return a = a | b; }
    friend constexpr GRIDSTYLE& operator&=(GRIDSTYLE& a, GRIDSTYLE b) { return a = a & b; }
    /// @}

    /// A value. At first intervals of 50, ticks and minor ticks with a long one to the north, and no marks.
    /// @{
    GridInfo() = default;
    GridInfo(const GridInfo& other) = default;
    GridInfo& operator=(const GridInfo& other) = default;
    /// @}

    virtual ~GridInfo() = default;

    double XInterval() const { return m_xInterval; }                    ///< between eastings; 50 at first
    double YInterval() const { return m_yInterval; }                    ///< between northings; 50 at first
    int XMinorTicks() const { return m_xMinorTicks; }                   ///< in each x interval
    int YMinorTicks() const { return m_yMinorTicks; }                   ///< in each y interval
    std::uint32_t GridStyle() const { return m_gridStyle; }             ///< a set of GRIDSTYLE flags
    float TickSize() const { return m_tickSize; }                       ///< length of a tick
    float MinorTickSize() const { return m_minorTickSize; }             ///< length of a minor tick
    const std::wstring& EastingMark() const { return m_eastingMark; }   ///< behind the labels of eastings
    const std::wstring& NorthingMark() const { return m_northingMark; } ///< behind the labels of northings

    /// All are stored as given.
    /// @{
    void SetXInterval(double interval) { m_xInterval = interval; }
    void SetYInterval(double interval) { m_yInterval = interval; }
    void SetXMinorTicks(int ticks) { m_xMinorTicks = ticks; }
    void SetYMinorTicks(int ticks) { m_yMinorTicks = ticks; }
    void SetGridStyle(std::uint32_t gridStyle) { m_gridStyle = gridStyle; }
    void SetTickSize(float size) { m_tickSize = size; }
    void SetMinorTickSize(float size) { m_minorTickSize = size; }
    void SetEastingMark(const std::wstring& mark) { m_eastingMark = mark; }
    void SetNorthingMark(const std::wstring& mark) { m_northingMark = mark; }
    /// @}

    /// Tolerant in the intervals (MATH::equal), exact in the rest.
    bool operator==(const GridInfo& other) const;

    /// Keys: XInterval, YInterval, XMinorTicks, YMinorTicks, GridStyle (the names of the flags that are set,
    /// with commas between them; blanks round a name are passed over), TickSize, MinorTickSize, EastingMark,
    /// NorthingMark (both in double quotes). Always true. A missing GridStyle clears all flags and a missing
    /// mark is empty; the other fields keep their values where their key is missing. Quotes at the ends of a
    /// mark itself do not come back.
    /// @{
    bool Read(const Section& section);
    bool Write(Section& section) const;
    /// @}

private:
    struct StyleText;
    std::wstring FormatGridStyle() const;
    void UnFormatGridStyle(const std::wstring& text);

    template <typename Exchange, typename Record> static bool Fields(Exchange field, Record& record);

    double m_xInterval = 50.0;
    double m_yInterval = 50.0;
    int m_xMinorTicks = 0;
    int m_yMinorTicks = 0;
    std::uint32_t m_gridStyle = X_TICKS | Y_TICKS | X_MINORTICKS | Y_MINORTICKS | LONG_NORTHTICK;
    float m_tickSize = 2.5f;
    float m_minorTickSize = 1.0f;
    std::wstring m_eastingMark;
    std::wstring m_northingMark;
};
