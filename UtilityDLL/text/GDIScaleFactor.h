// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/Export.h"

#include <cstdint>

/// The magnification at which text is measured: world units times this are a device context's logical ones,
/// so that integers are exact enough.
class UTILITYDLL_API GDIScaleFactor {
public:
    /// The magnification: 1000.
    static double Get() { return m_instance.m_factor; }

    /// The largest coordinate that the device takes.
    static unsigned int MaxCoord() { return m_instance.m_maxCoord; }

private:
    static const GDIScaleFactor m_instance;
    double m_factor = 1000.0;
    std::uint32_t m_maxCoord = 0x7FFFFFFF;
};
