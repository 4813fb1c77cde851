// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/GTL/Classification.h"
#include "UtilityDLL/GTL/Extents2D.h"
#include "UtilityDLL/GTL/ExternTemplate.h"
#include "UtilityDLL/GTL/Point3D.h"
#include "UtilityDLL/GTL/Transformation.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>

namespace GTL {

/// Axis-aligned box in space that grows with what is added to it; exported for float and double. Whether it
/// is valid is decided on x and y alone: the z range is only grown and read. The attributes of its corner
/// points are carried and never compared.
template <typename T> class Extents3D {
public:
    using P = Point3D<T>; ///< a corner, and what is added

    constexpr Extents3D() noexcept = default; ///< not valid

    /// Whether the box holds anything: x and y of its maximum are not below those of its minimum.
    constexpr bool IsValid() const noexcept { return m_max.X() >= m_min.X() && m_max.Y() >= m_min.Y(); }

    /// The corners with the lowest and the highest values, whether the box is valid or not.
    /// @{
    constexpr const P& MinPnt() const noexcept { return m_min; }
    constexpr const P& MaxPnt() const noexcept { return m_max; }
    /// @}

    /// The bare values, whether the box is valid or not.
    /// @{
    constexpr T MinX() const noexcept { return m_min.X(); }
    constexpr T MinY() const noexcept { return m_min.Y(); }
    constexpr T MinZ() const noexcept { return m_min.Z(); }
    constexpr T MaxX() const noexcept { return m_max.X(); }
    constexpr T MaxY() const noexcept { return m_max.Y(); }
    constexpr T MaxZ() const noexcept { return m_max.Z(); }
    /// @}

    /// The sides of the box; 0 when it is not valid. ExtentZ() of a valid box is negative when its z range is
    /// inverted.
    /// @{
    constexpr T ExtentX() const noexcept { return IsValid() ? MaxX() - MinX() : T{0}; }
    constexpr T ExtentY() const noexcept { return IsValid() ? MaxY() - MinY() : T{0}; }
    constexpr T ExtentZ() const noexcept { return IsValid() ? MaxZ() - MinZ() : T{0}; }
    /// @}

    /// The middle of the two corners, with the attribute 0, whether the box is valid or not.
    constexpr P Center() const noexcept {
        return {MinX() + (MaxX() - MinX()) * T{0.5}, MinY() + (MaxY() - MinY()) * T{0.5},
                MinZ() + (MaxZ() - MinZ()) * T{0.5}};
    }

    /// INSIDE or OUTSIDE, with regard to z as well; INVALID when the box is not valid.
    constexpr CLS::CLASSIFICATION Classify(const P& p) const noexcept {
        if (!IsValid()) return CLS::INVALID;
        return Covers(p) ? CLS::INSIDE : CLS::OUTSIDE;
    }

    /// INSIDE when the other box is within this one; INVALID when one of the two is not valid.
    constexpr CLS::CLASSIFICATION Classify(const Extents3D& other) const noexcept {
        if (!IsValid() || !other.IsValid()) return CLS::INVALID;
        if (IsApartFrom(other)) return CLS::OUTSIDE;
        return Covers(other) ? CLS::INSIDE : CLS::OVERLAP;
    }

    /// Makes the box invalid again; the z range and the attributes of the corners are left as they are.
    constexpr void Reset() noexcept {
        m_min = P(1, 1, m_min.Z(), m_min.B());
        m_max = P(0, 0, m_max.Z(), m_max.B());
    }

    /// Grows to hold the point; a box that is not valid becomes the point, with its attribute. A coordinate
    /// that is NaN does not grow a valid box.
    /// @{
    constexpr void Update(const P& p) noexcept {
        if (!IsValid()) [[unlikely]] {
            m_min = m_max = p;
            return;
        }
        m_min.X(std::min(MinX(), p.X()));
        m_min.Y(std::min(MinY(), p.Y()));
        m_min.Z(std::min(MinZ(), p.Z()));
        m_max.X(std::max(MaxX(), p.X()));
        m_max.Y(std::max(MaxY(), p.Y()));
        m_max.Z(std::max(MaxZ(), p.Z()));
    }
    constexpr void Update(T x, T y, T z) noexcept { Update(P(x, y, z)); }
    /// @}

    /// Grows to hold all the points, like adding them one by one, but faster.
    constexpr void Update(std::span<const P> points) noexcept {
        std::size_t next = 0;
        while (next < points.size() && !IsValid()) Update(points[next++]);
        // From here on the box stays valid. Two boxes grow in turn, so that one need not wait for the other.
        Bounds even(*this);
        Bounds odd(*this);
        for (; next + 1 < points.size(); next += 2) {
            even.Take(points[next]);
            odd.Take(points[next + 1]);
        }
        if (next < points.size()) even.Take(points[next]);
        m_min = P(std::min(even.minX, odd.minX), std::min(even.minY, odd.minY), std::min(even.minZ, odd.minZ),
                  m_min.B());
        m_max = P(std::max(even.maxX, odd.maxX), std::max(even.maxY, odd.maxY), std::max(even.maxZ, odd.maxZ),
                  m_max.B());
    }

    /// Grows to hold the other box; one that is not valid changes nothing.
    /// @{
    constexpr void Update(const Extents3D& other) noexcept {
        if (!other.IsValid()) return;
        Update(other.m_min);
        Update(other.m_max);
    }
    constexpr Extents3D& operator+=(const Extents3D& other) noexcept {
        Update(other);
        return *this;
    }
    /// @}

    /// The box that holds both.
    constexpr Extents3D operator+(const Extents3D& other) const noexcept { return Extents3D(*this) += other; }

    /// Becomes the box around its eight transformed corners, which have the attribute 0; a box that is not
    /// valid stays as it is.
    void Transform(const Transformation<P>& transformation) {
        if (!IsValid()) return;
        std::array<P, 8> corners;
        for (std::size_t i = 0; i < corners.size(); ++i) {
            corners[i] = P(i & 1 ? MaxX() : MinX(), i & 2 ? MaxY() : MinY(), i & 4 ? MaxZ() : MinZ());
        }
        for (P& corner : corners) transformation.Apply(corner);
        Reset();
        for (const P& corner : corners) Update(corner);
    }

    /// Exact on x, y and z of both corners, unlike the equality of planar boxes; != is its negation.
    constexpr bool operator==(const Extents3D& other) const noexcept {
        return m_min == other.m_min && m_max == other.m_max;
    }

    /// The planar box; not valid when this one is not.
    constexpr operator Extents2D<T>() const noexcept {
        Extents2D<T> planar;
        if (IsValid()) {
            planar.Update(static_cast<const Point2D<T>&>(m_min));
            planar.Update(static_cast<const Point2D<T>&>(m_max));
        }
        return planar;
    }

private:
    // Bare values, which stay in registers while a run of points goes by.
    struct Bounds {
        constexpr explicit Bounds(const Extents3D& box) noexcept
            : minX(box.MinX()), minY(box.MinY()), minZ(box.MinZ()), maxX(box.MaxX()), maxY(box.MaxY()),
              maxZ(box.MaxZ()) {}
        constexpr void Take(const P& p) noexcept {
            minX = std::min(minX, p.X());
            minY = std::min(minY, p.Y());
            minZ = std::min(minZ, p.Z());
            maxX = std::max(maxX, p.X());
            maxY = std::max(maxY, p.Y());
            maxZ = std::max(maxZ, p.Z());
        }
        T minX, minY, minZ, maxX, maxY, maxZ;
    };

    // Strictly: boxes that touch are not apart.
    constexpr bool IsApartFrom(const Extents3D& other) const noexcept {
        return other.MinX() > MaxX() || MinX() > other.MaxX() || other.MinY() > MaxY() ||
               MinY() > other.MaxY() || other.MinZ() > MaxZ() || MinZ() > other.MaxZ();
    }
    constexpr bool Covers(const P& p) const noexcept {
        return MinX() <= p.X() && p.X() <= MaxX() && MinY() <= p.Y() && p.Y() <= MaxY() && MinZ() <= p.Z() &&
               p.Z() <= MaxZ();
    }
    constexpr bool Covers(const Extents3D& other) const noexcept {
        return other.MinX() >= MinX() && other.MaxX() <= MaxX() && other.MinY() >= MinY() &&
               other.MaxY() <= MaxY() && other.MinZ() >= MinZ() && other.MaxZ() <= MaxZ();
    }

    P m_min{1, 1, 0, 0};
    P m_max{0, 0, 0, 0};
};

GTL_EXTERN_TEMPLATE(Extents3D<float>);
GTL_EXTERN_TEMPLATE(Extents3D<double>);

} // namespace GTL
