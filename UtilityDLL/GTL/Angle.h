// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/Export.h"
#include "VelmBase/Math.h"

/// A direction or rotation in degrees, kept on one turn: 0 <= Get() < 360. At the seam, -360 is kept as -0,
/// and a negative angle too small to count (-1e-20) as 360 exactly. What is not finite becomes NaN.
///
/// A number stands for the angle of so many degrees, in comparisons too and on either side.
class UTILITYDLL_API Angle {
public:
    /// An angle of so many degrees, brought to one turn.
    Angle(double degrees = 0.0) noexcept { Set(degrees); }

    /// The angle in degrees, and in radians.
    /// @{
    double Get() const noexcept { return m_degrees; }
    double Rad() const noexcept { return m_degrees * MATH::DTR; }
    /// @}

    /// The functions of the angle, as the C library computes them; NaN for NaN.
    /// @{
    double Sin() const noexcept;
    double Cos() const noexcept;
    double Tan() const noexcept;
    /// @}

    /// 1 for [0, 90), 2 for [90, 180), 3 for [180, 270), 4 for [270, 360); 5 for 360 exactly, and
    /// -2147483648 for NaN.
    int Quadrant() const noexcept { return MATH::ToInt(m_degrees / 90.0 + 1.0); }

    /// The turn from this angle forward to `other`.
    Angle Difference(const Angle& other) const noexcept {
        return other.m_degrees > m_degrees ? other.m_degrees - m_degrees
                                           : 360.0 - m_degrees + other.m_degrees;
    }

    /// The result is brought to one turn, so that 350 + 20 is 10, and 10 - 20 is 350.
    /// @{
    Angle operator+(const Angle& other) const noexcept { return m_degrees + other.m_degrees; }
    Angle operator-(const Angle& other) const noexcept { return m_degrees - other.m_degrees; }
    Angle operator-() const noexcept { return -m_degrees; }
    Angle operator*(double factor) const noexcept { return m_degrees * factor; }
    /// @}

    /// NaN when divided by 0.
    Angle operator/(double divisor) const noexcept { return m_degrees / divisor; }

    /// In place, and brought to one turn.
    /// @{
    Angle& operator+=(const Angle& other) noexcept { return *this = *this + other; }
    Angle& operator-=(const Angle& other) noexcept { return *this = *this - other; }
    Angle& operator*=(double factor) noexcept { return *this = *this * factor; }
    Angle& operator/=(double divisor) noexcept { return *this = *this / divisor; }
    /// @}

    /// Tolerant (MATH::equal).
    friend bool operator==(const Angle& a, const Angle& b) noexcept {
        return MATH::equal(b.m_degrees, a.m_degrees);
    }

    /// Exact, so it is not the negation of ==: angles closer than the tolerance are both == and !=. Written
    /// out, because the language would derive one from the other.
    friend bool operator!=(const Angle& a, const Angle& b) noexcept { return b.m_degrees != a.m_degrees; }

    /// Exact. Beside NaN < and > are false, <= and >= true.
    /// @{
    friend bool operator<(const Angle& a, const Angle& b) noexcept { return a.m_degrees < b.m_degrees; }
    friend bool operator>(const Angle& a, const Angle& b) noexcept { return a.m_degrees > b.m_degrees; }
    friend bool operator<=(const Angle& a, const Angle& b) noexcept { return !(a.m_degrees > b.m_degrees); }
    friend bool operator>=(const Angle& a, const Angle& b) noexcept { return !(b.m_degrees > a.m_degrees); }
    /// @}

private:
    void Set(double degrees) noexcept;

    double m_degrees = 0.0;
};
