// SPDX-License-Identifier: MIT
#pragma once

#include "Framework/Values.h"
#include "UtilityDLL/Export.h"
#include "UtilityDLL/GTL/Element.h"
#include "UtilityDLL/GTL/Point2D.h"

/// An integer point that takes the points of the geometry, rounding them: floor(coordinate + 0.5), computed
/// in double precision. NaN and values beyond int become -2147483648.
class UTILITYDLL_API CPointMimic {
public:
    constexpr CPointMimic() noexcept = default; ///< (0, 0)

    /// A point with these coordinates, rounded where they are not integers.
    /// @{
    constexpr CPointMimic(int x, int y) noexcept : m_x(x), m_y(y) {}
    constexpr CPointMimic(const CPoint& p) noexcept : m_x(p.x), m_y(p.y) {}
    constexpr CPointMimic(const GTL::Point2D<int>& p) noexcept : m_x(p.X()), m_y(p.Y()) {}
    CPointMimic(const GTL::Point2D<float>& p) noexcept
        : m_x(GTL::ELEMENT::Rounded(p.X())), m_y(GTL::ELEMENT::Rounded(p.Y())) {}
    CPointMimic(const GTL::Point2D<double>& p) noexcept
        : m_x(GTL::ELEMENT::Rounded(p.X())), m_y(GTL::ELEMENT::Rounded(p.Y())) {}
    /// @}

    /// The coordinates.
    /// @{
    constexpr int X() const noexcept { return m_x; }
    constexpr int Y() const noexcept { return m_y; }
    constexpr void X(int x) noexcept { m_x = x; }
    constexpr void Y(int y) noexcept { m_y = y; }
    /// @}

private:
    int m_x = 0;
    int m_y = 0;
};
