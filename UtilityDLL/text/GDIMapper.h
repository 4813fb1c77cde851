// SPDX-License-Identifier: MIT
#pragma once

#include "Framework/Values.h"
#include "UtilityDLL/Export.h"
#include "UtilityDLL/GTL/Extents2D.h"
#include "UtilityDLL/GTL/Point2D.h"

/// Fits a box of the world (doubles, y up) into a rectangle of a device (integer pixels, y down), and
/// converts points and distances both ways.
///
/// Nothing is checked: an empty box or rectangle gives a scale of 0, infinity or NaN. What does not fit when
/// it is truncated to 32 bits, or is NaN, becomes -2147483648, and arithmetic on device coordinates wraps.
class UTILITYDLL_API GDIMapper {
public:
    /// All is 0.
    GDIMapper() = default;

    /// The whole box fits, at the same scale in x and y, its centre in the rectangle's.
    void Create(const GTL::Extents2D<double>& world, const CRect& device);

    /// World units a pixel.
    double GetScale() const { return m_scale; }

    /// The pixel that shows the point. Coordinates are truncated toward zero, and y is flipped about the
    /// rectangle's height, not about its top.
    CPoint operator<<(const GTL::Point2D<double>& point) const;

    /// The point of the world in the middle of the pixel. The operator for points shows it one row lower:
    /// there a row lies above its coordinate, here below.
    GTL::Point2D<double> operator<<(const CPoint& pixel) const;

    /// World units as pixels: the half is added before truncating toward zero, to negative ones as well, so
    /// that -2 pixels are -1.
    int PixelDist(double distance) const;

    /// Pixels as world units.
    double WorldDist(int pixels) const { return pixels * m_scale; }

private:
    GTL::Point2D<double> m_worldCentre;
    CPoint m_deviceCentre;
    double m_scale = 0.0;
    int m_deviceHeight = 0;
};
