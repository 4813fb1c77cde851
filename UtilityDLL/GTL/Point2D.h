// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/GTL/Element.h"
#include "UtilityDLL/GTL/ExternTemplate.h"
#include "UtilityDLL/GTL/Transformation.h"
#include "UtilityDLL/GTL/Vector2D.h"
#include "VelmBase/Math.h"

namespace GTL {

/// A point of the plane, in the caller's units; exported for int, float and double. Arithmetic on int wraps
/// at 32 bits.
template <typename T> class Point2D {
public:
    using ElementType = T; ///< of a coordinate

    /// (0, 0)
    constexpr Point2D() noexcept = default;

    /// The third value is ignored; with it the same code can make planar and spatial points.
    constexpr Point2D(T x, T y, T /*third*/ = T{}) noexcept : m_x(x), m_y(y) {}

    /// The point at which a vector ends that begins at (0, 0).
    constexpr Point2D(const Vector2D<T>& v) noexcept : m_x(v.X()), m_y(v.Y()) {}

    /// The coordinates. A reference writes through to the point.
    /// @{
    constexpr T X() const noexcept { return m_x; }
    constexpr T Y() const noexcept { return m_y; }
    constexpr T& X() noexcept { return m_x; }
    constexpr T& Y() noexcept { return m_y; }
    constexpr void X(T x) noexcept { m_x = x; }
    constexpr void Y(T y) noexcept { m_y = y; }
    /// @}

    /// The vector from (0, 0) to the point.
    constexpr operator Vector2D<T>() const noexcept { return {m_x, m_y}; }

    /// The difference of two points is a vector, and so is their sum.
    /// @{
    constexpr Vector2D<T> operator-(const Point2D& other) const noexcept {
        return {ELEMENT::Difference(m_x, other.m_x), ELEMENT::Difference(m_y, other.m_y)};
    }
    constexpr Vector2D<T> operator+(const Point2D& other) const noexcept {
        return {ELEMENT::Sum(m_x, other.m_x), ELEMENT::Sum(m_y, other.m_y)};
    }
    /// @}

    /// The point moved by the vector, or against it.
    /// @{
    constexpr Point2D operator+(const Vector2D<T>& v) const noexcept { return Point2D(*this) += v; }
    constexpr Point2D operator-(const Vector2D<T>& v) const noexcept { return Point2D(*this) -= v; }
    constexpr Point2D& operator+=(const Vector2D<T>& v) noexcept {
        m_x = ELEMENT::Sum(m_x, v.X());
        m_y = ELEMENT::Sum(m_y, v.Y());
        return *this;
    }
    constexpr Point2D& operator-=(const Vector2D<T>& v) noexcept {
        m_x = ELEMENT::Difference(m_x, v.X());
        m_y = ELEMENT::Difference(m_y, v.Y());
        return *this;
    }
    /// @}

    /// Both coordinates divided. For int toward zero; by 0 both become -2147483648.
    constexpr Point2D operator/(const T& divisor) const noexcept {
        return {ELEMENT::Quotient(m_x, divisor), ELEMENT::Quotient(m_y, divisor)};
    }

    /// Tolerant (MATH::equal on each coordinate), unlike the equality of spatial points; != is its negation.
    bool operator==(const Point2D& other) const noexcept {
        return MATH::equal(m_x, other.m_x) && MATH::equal(m_y, other.m_y);
    }

    /// By x, then by y where the x are equal; exact, unlike ==. Beside NaN < and > are false, <= and >= true.
    /// @{
    constexpr bool operator<(const Point2D& other) const noexcept {
        return m_x < other.m_x || (m_x == other.m_x && m_y < other.m_y);
    }
    constexpr bool operator>(const Point2D& other) const noexcept { return other < *this; }
    constexpr bool operator<=(const Point2D& other) const noexcept { return !(*this > other); }
    constexpr bool operator>=(const Point2D& other) const noexcept { return !(*this < other); }
    /// @}

    /// The distance, or its square. The square is computed in the element type (for int it wraps at 32 bits),
    /// the root in double precision.
    double Dist2D(const Point2D& other, bool squared = false) const noexcept;

    /// Moves the point as the transformation says.
    void Transform(const Transformation<Point2D>& transformation) { transformation.Apply(*this); }

private:
    T m_x{};
    T m_y{};
};

GTL_EXTERN_TEMPLATE(Point2D<int>);
GTL_EXTERN_TEMPLATE(Point2D<float>);
GTL_EXTERN_TEMPLATE(Point2D<double>);

} // namespace GTL
