// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/Export.h"
#include "UtilityDLL/settings/Section.h"

#include <string>

/// Artificial sun shading of a surface.
class UTILITYDLL_API SunIlluminationInfo {
public:
    /// A value. At first off, with the sun at 290 degrees, 30 degrees high, and contrast 1.
    /// @{
    SunIlluminationInfo() = default;
    SunIlluminationInfo(const SunIlluminationInfo& other) = default;
    SunIlluminationInfo& operator=(const SunIlluminationInfo& other) = default;
    /// @}

    virtual ~SunIlluminationInfo() = default;

    bool Enable() const { return m_enable; }         ///< whether the surface is shaded
    double Azimuth() const { return m_azimuth; }     ///< of the sun, in degrees
    double Elevation() const { return m_elevation; } ///< of the sun, in degrees
    double Contrast() const { return m_contrast; }   ///< how strong the shading is; 1 at first

    /// All are stored as given.
    /// @{
    void Enable(bool enable) { m_enable = enable; }
    void Azimuth(double degrees) { m_azimuth = degrees; }
    void Elevation(double degrees) { m_elevation = degrees; }
    void Contrast(double contrast) { m_contrast = contrast; }
    /// @}

    /// Exact.
    bool operator==(const SunIlluminationInfo& other) const;

    /// Keys: SunIllumunationEnable, SunIllumunationAzimuth, SunIllumunationElevation,
    /// SunIllumunationContrast; with a prefix as in "Chart.SunIllumunationEnable". Always true. Fields keep
    /// their values where their key is missing.
    /// @{
    bool Read(const Section& section);
    bool Read(const std::wstring& prefix, const Section& section);
    bool Write(Section& section) const;
    bool Write(const std::wstring& prefix, Section& section) const;
    /// @}

private:
    template <typename Exchange, typename Record> static bool Fields(Exchange field, Record& record);

    bool m_enable = false;
    double m_azimuth = 290.0;
    double m_elevation = 30.0;
    double m_contrast = 1.0;
};
