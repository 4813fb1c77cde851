// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/GTL/Angle.h"
#include "UtilityDLL/GTL/ExternTemplate.h"

namespace GTL {

/// A spatial displacement with a fourth value `w`, which takes no part in the arithmetic: it only carries the
/// attribute of a point that is built from the vector. Every vector that an operation makes has w = 0.
template <typename T> class Vector3D {
public:
    using ElementType = T; ///< of a component

    constexpr Vector3D() noexcept = default; ///< (0, 0, 0) with w = 0

    /// A displacement by so much in x, y and z, with the attribute that it carries.
    constexpr Vector3D(T x, T y, T z, T w = T{}) noexcept : m_x(x), m_y(y), m_z(z), m_w(w) {}

    /// The components, and the attribute.
    /// @{
    constexpr T X() const noexcept { return m_x; }
    constexpr T Y() const noexcept { return m_y; }
    constexpr T Z() const noexcept { return m_z; }
    constexpr T W() const noexcept { return m_w; }
    constexpr void X(T x) noexcept { m_x = x; }
    constexpr void Y(T y) noexcept { m_y = y; }
    constexpr void Z(T z) noexcept { m_z = z; }
    constexpr void W(T w) noexcept { m_w = w; }
    /// @}

    /// The direction of (x, y) from the +y axis toward the +x axis: clockwise on a map with north up. 0 for a
    /// vector without a planar part.
    Angle Bearing() const noexcept;

    /// The angle between the two directions, 0 to 180 degrees; NaN when one of them has no length. A cosine
    /// that rounding carried beyond 1 counts as 1, so parallel vectors have an angle.
    Angle AngleTo(const Vector3D& other) const noexcept;

    /// Of (x, y, z), in the vector's unit; for float computed in single precision altogether. Infinite where
    /// the square of a component is.
    T Length() const noexcept;

    /// Divides x, y and z by the length; NaN for a vector without length.
    void Normalize() noexcept { *this /= Length(); }

    /// The cross product, with w = 0.
    Vector3D Cross(const Vector3D& other) const noexcept;

    /// The scalar product of x, y and z.
    T Dot(const Vector3D& other) const noexcept;

    /// A scalar on each of x, y and z, in place; w is kept.
    /// @{
    constexpr Vector3D& operator+=(T scalar) noexcept { return Assign(*this + scalar); }
    constexpr Vector3D& operator-=(T scalar) noexcept { return Assign(*this - scalar); }
    constexpr Vector3D& operator*=(T scalar) noexcept { return Assign(*this * scalar); }
    constexpr Vector3D& operator/=(T scalar) noexcept { return Assign(*this / scalar); }
    /// @}

    /// A scalar on each of x, y and z: a new vector, with w = 0.
    /// @{
    constexpr Vector3D operator+(T scalar) const noexcept {
        return {m_x + scalar, m_y + scalar, m_z + scalar};
    }
    constexpr Vector3D operator-(T scalar) const noexcept {
        return {m_x - scalar, m_y - scalar, m_z - scalar};
    }
    constexpr Vector3D operator*(T scalar) const noexcept {
        return {m_x * scalar, m_y * scalar, m_z * scalar};
    }
    constexpr Vector3D operator/(T scalar) const noexcept {
        return {m_x / scalar, m_y / scalar, m_z / scalar};
    }
    /// @}

private:
    constexpr Vector3D& Assign(const Vector3D& xyz) noexcept {
        m_x = xyz.m_x;
        m_y = xyz.m_y;
        m_z = xyz.m_z;
        return *this;
    }

    T m_x{};
    T m_y{};
    T m_z{};
    T m_w{};
};

GTL_EXTERN_TEMPLATE(Vector3D<float>);
GTL_EXTERN_TEMPLATE(Vector3D<double>);

} // namespace GTL
