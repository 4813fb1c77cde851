// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/GTL/ExternTemplate.h"
#include "UtilityDLL/GTL/Point2D.h"
#include "UtilityDLL/GTL/Transformation.h"
#include "UtilityDLL/GTL/Vector3D.h"

namespace GTL {

/// A point in space with an attribute value `b`; exported for float and double. The attribute is carried, but
/// takes no part in distances, comparisons or arithmetic, and operators that build a new point set it to 0.
///
/// Its planar part is its base: where a planar point is wanted, that part of this very point is taken, and a
/// change of the one is a change of the other. A spatial and a planar point are compared as planar ones.
template <typename T> class Point3D : public Point2D<T> {
public:
    /// (0, 0, 0) with the attribute 0
    constexpr Point3D() noexcept = default;

    /// The values, or a planar point with those that it lacks.
    /// @{
    constexpr Point3D(T x, T y, T z, T b = T{}) noexcept : Point2D<T>(x, y), m_z(z), m_b(b) {}
    constexpr Point3D(const Point2D<T>& p, T z, T b = T{}) noexcept : Point2D<T>(p), m_z(z), m_b(b) {}
    /// @}

    /// All four values: the vector's w becomes the attribute.
    /// @{
    constexpr Point3D(const Vector3D<T>& v) noexcept : Point3D(v.X(), v.Y(), v.Z(), v.W()) {}
    constexpr Point3D& operator=(const Vector3D<T>& v) noexcept { return *this = Point3D(v); }
    /// @}

    using Point2D<T>::X;
    using Point2D<T>::Y;

    /// The height and the attribute. A reference writes through to the point.
    /// @{
    constexpr T Z() const noexcept { return m_z; }
    constexpr T B() const noexcept { return m_b; }
    constexpr T& Z() noexcept { return m_z; }
    constexpr T& B() noexcept { return m_b; }
    constexpr void Z(T z) noexcept { m_z = z; }
    constexpr void B(T b) noexcept { m_b = b; }
    /// @}

    /// (x, y, z) with w = 0
    constexpr operator Vector3D<T>() const noexcept { return {X(), Y(), m_z}; }

    /// The vector from `other` to this point.
    constexpr Vector3D<T> operator-(const Point3D& other) const noexcept {
        return {X() - other.X(), Y() - other.Y(), m_z - other.m_z};
    }

    /// The point moved by the vector, or against it; its attribute is 0.
    /// @{
    constexpr Point3D operator+(const Vector3D<T>& v) const noexcept {
        return {X() + v.X(), Y() + v.Y(), m_z + v.Z()};
    }
    constexpr Point3D operator-(const Vector3D<T>& v) const noexcept {
        return {X() - v.X(), Y() - v.Y(), m_z - v.Z()};
    }
    /// @}

    /// All three coordinates divided; the attribute is 0.
    constexpr Point3D operator/(const T& divisor) const noexcept {
        return {X() / divisor, Y() / divisor, m_z / divisor};
    }

    /// In place; the attribute is kept.
    /// @{
    constexpr Point3D& operator+=(const Vector3D<T>& v) noexcept {
        return *this = Point3D(X() + v.X(), Y() + v.Y(), m_z + v.Z(), m_b);
    }
    constexpr Point3D& operator-=(const Vector3D<T>& v) noexcept {
        return *this = Point3D(X() - v.X(), Y() - v.Y(), m_z - v.Z(), m_b);
    }
    /// @}

    /// Exact, unlike the equality of planar points; != is its negation.
    constexpr bool operator==(const Point3D& other) const noexcept {
        return X() == other.X() && Y() == other.Y() && m_z == other.m_z;
    }

    /// By x, then y, then z; exact. Beside NaN < and > are false, <= and >= true.
    /// @{
    constexpr bool operator<(const Point3D& other) const noexcept {
        if (X() != other.X()) return X() < other.X();
        if (Y() != other.Y()) return Y() < other.Y();
        return m_z < other.m_z;
    }
    constexpr bool operator>(const Point3D& other) const noexcept { return other < *this; }
    constexpr bool operator<=(const Point3D& other) const noexcept { return !(*this > other); }
    constexpr bool operator>=(const Point3D& other) const noexcept { return !(*this < other); }
    /// @}

    /// The distance in space, or its square; for float computed in single precision altogether.
    double Dist3D(const Point3D& other, bool squared = false) const noexcept;

    /// Moves the point as the transformation says.
    void Transform(const Transformation<Point3D>& transformation) { transformation.Apply(*this); }

private:
    T m_z{};
    T m_b{};
};

GTL_EXTERN_TEMPLATE(Point3D<float>);
GTL_EXTERN_TEMPLATE(Point3D<double>);

} // namespace GTL
