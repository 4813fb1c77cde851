// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/Export.h"
#include "UtilityDLL/settings/Section.h"

#include <cmath>
#include <cstdint>

/// The grid of latitudes and longitudes on a chart. What the numbers of LatLonStyle and GridStyle mean is up
/// to the drawing clients.
class UTILITYDLL_API GeoGridInfo {
public:
    /// A value. At first black lines two seconds of arc apart, grid style 1, and labels of style 0 with two
    /// decimals.
    /// @{
    GeoGridInfo() = default;
    GeoGridInfo(const GeoGridInfo& other) = default;
    GeoGridInfo& operator=(const GeoGridInfo& other) = default;
    /// @}

    virtual ~GeoGridInfo() = default;

    unsigned long GridColor() const { return m_gridColor; } ///< a colour reference
    int LatLonStyle() const { return m_latLonStyle; }       ///< of the labels
    int LatLonDecimals() const { return m_latLonDecimals; } ///< of the labels

    /// Whether the letter of the hemisphere stands behind the value.
    bool TrailingHemisphereIndicator() const { return m_trailingHemisphereIndicator; }

    /// Whether labels have the signs of degrees, minutes and seconds.
    bool DegMinSecSymbols() const { return m_degMinSecSymbols; }

    int GridStyle() const { return m_gridStyle; }        ///< how lines are drawn
    double LatInterval() const { return m_latInterval; } ///< in degrees, between lines of latitude
    double LonInterval() const { return m_lonInterval; } ///< in degrees, between lines of longitude

    /// All are stored as given, but the intervals as absolute values.
    /// @{
    void GridColor(const unsigned long& color) { m_gridColor = static_cast<std::uint32_t>(color); }
    void LatLonStyle(int style) { m_latLonStyle = style; }
    void LatLonDecimals(int decimals) { m_latLonDecimals = decimals; }
    void TrailingHemisphereIndicator(bool trailing) { m_trailingHemisphereIndicator = trailing; }
    void DegMinSecSymbols(bool symbols) { m_degMinSecSymbols = symbols; }
    void GridStyle(int style) { m_gridStyle = style; }
    void LatInterval(double degrees) { m_latInterval = std::fabs(degrees); }
    void LonInterval(double degrees) { m_lonInterval = std::fabs(degrees); }
    /// @}

    /// Tolerant in the intervals (MATH::equal), exact in the rest.
    bool operator==(const GeoGridInfo& other) const;

    /// Keys: LonInterval, LatInterval (with all their digits), LatLonStyle, LatLonDecimals,
    /// TrailingHemisphereIndicator, DegMinSecSymbols, GridStyle (a number), GridColor (DXF index),
    /// GridTrueColor. Always true. A missing GridColor counts as index 0; the other fields keep their values
    /// where their key is missing. GridTrueColor goes before GridColor. Intervals are read as absolute
    /// values.
    /// @{
    bool Read(const Section& section);
    bool Write(Section& section) const;
    /// @}

private:
    template <typename Exchange, typename Record> static bool Fields(Exchange field, Record& record);

    unsigned long m_gridColor = 0;
    int m_latLonStyle = 0;
    int m_latLonDecimals = 2;
    bool m_trailingHemisphereIndicator = false;
    bool m_degMinSecSymbols = false;
    int m_gridStyle = 1;
    double m_latInterval = 1.0 / 1800.0; // two seconds of arc
    double m_lonInterval = 1.0 / 1800.0;
};
