// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/GTL/Classification.h"
#include "UtilityDLL/GTL/ExternTemplate.h"
#include "UtilityDLL/GTL/Point2D.h"
#include "UtilityDLL/GTL/Transformation.h"
#include "VelmBase/Math.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>

namespace GTL {

/// Axis-aligned box in the caller's units that grows with what is added to it; exported for float and double.
/// A box that nothing was added to is not valid: its maximum lies below its minimum.
template <typename T> class Extents2D {
public:
    using P = Point2D<T>; ///< a corner, and what is added

    constexpr Extents2D() noexcept = default; ///< not valid

    /// Whether the box holds anything: neither coordinate of its maximum is below that of its minimum.
    constexpr bool IsValid() const noexcept { return m_max.X() >= m_min.X() && m_max.Y() >= m_min.Y(); }

    /// The lower left and the upper right corner, whether the box is valid or not.
    /// @{
    constexpr const P& MinPnt() const noexcept { return m_min; }
    constexpr const P& MaxPnt() const noexcept { return m_max; }
    /// @}

    /// The bare values, whether the box is valid or not.
    /// @{
    constexpr T MinX() const noexcept { return m_min.X(); }
    constexpr T MinY() const noexcept { return m_min.Y(); }
    constexpr T MaxX() const noexcept { return m_max.X(); }
    constexpr T MaxY() const noexcept { return m_max.Y(); }
    /// @}

    /// The sides of the box; 0 when it is not valid.
    /// @{
    constexpr T ExtentX() const noexcept { return IsValid() ? MaxX() - MinX() : T{0}; }
    constexpr T ExtentY() const noexcept { return IsValid() ? MaxY() - MinY() : T{0}; }
    /// @}

    /// The middle of the two corners, whether the box is valid or not.
    constexpr P Center() const noexcept {
        return {MinX() + (MaxX() - MinX()) * T{0.5}, MinY() + (MaxY() - MinY()) * T{0.5}};
    }

    /// INSIDE or OUTSIDE; INVALID when the box is not valid.
    constexpr CLS::CLASSIFICATION Classify(const P& p) const noexcept {
        if (!IsValid()) return CLS::INVALID;
        return Covers(p) ? CLS::INSIDE : CLS::OUTSIDE;
    }

    /// INSIDE when the other box is within this one; INVALID when one of the two is not valid.
    constexpr CLS::CLASSIFICATION Classify(const Extents2D& other) const noexcept {
        if (!IsValid() || !other.IsValid()) return CLS::INVALID;
        if (IsApartFrom(other)) return CLS::OUTSIDE;
        return Covers(other) ? CLS::INSIDE : CLS::OVERLAP;
    }

    /// Makes the box invalid again.
    constexpr void Reset() noexcept { *this = Extents2D(); }

    /// Grows to hold the point; a box that is not valid becomes the point. A coordinate that is NaN does not
    /// grow a valid box.
    /// @{
    constexpr void Update(const P& p) noexcept {
        if (!IsValid()) [[unlikely]] {
            m_min = m_max = p;
            return;
        }
        m_min.X(std::min(MinX(), p.X()));
        m_min.Y(std::min(MinY(), p.Y()));
        m_max.X(std::max(MaxX(), p.X()));
        m_max.Y(std::max(MaxY(), p.Y()));
    }
    constexpr void Update(T x, T y) noexcept { Update(P(x, y)); }
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
        m_min = P(std::min(even.minX, odd.minX), std::min(even.minY, odd.minY));
        m_max = P(std::max(even.maxX, odd.maxX), std::max(even.maxY, odd.maxY));
    }

    /// Grows to hold the other box; one that is not valid changes nothing.
    /// @{
    constexpr void Update(const Extents2D& other) noexcept {
        if (!other.IsValid()) return;
        Update(other.m_min);
        Update(other.m_max);
    }
    constexpr Extents2D& operator+=(const Extents2D& other) noexcept {
        Update(other);
        return *this;
    }
    /// @}

    /// The box that holds both.
    constexpr Extents2D operator+(const Extents2D& other) const noexcept { return Extents2D(*this) += other; }

    /// Becomes the box around its four transformed corners; a box that is not valid stays as it is.
    void Transform(const Transformation<P>& transformation) {
        if (!IsValid()) return;
        std::array<P, 4> corners = {P(MinX(), MinY()), P(MaxX(), MinY()), P(MaxX(), MaxY()),
                                    P(MinX(), MaxY())};
        for (P& corner : corners) transformation.Apply(corner);
        Reset();
        for (const P& corner : corners) Update(corner);
    }

    /// Tolerant (MATH::equal on the four values), unlike the equality of spatial boxes; != is its negation.
    bool operator==(const Extents2D& other) const noexcept {
        return MATH::equal(MinX(), other.MinX()) && MATH::equal(MinY(), other.MinY()) &&
               MATH::equal(MaxX(), other.MaxX()) && MATH::equal(MaxY(), other.MaxY());
    }

private:
    // Bare values, which stay in registers while a run of points goes by.
    struct Bounds {
        constexpr explicit Bounds(const Extents2D& box) noexcept
            : minX(box.MinX()), minY(box.MinY()), maxX(box.MaxX()), maxY(box.MaxY()) {}
        constexpr void Take(const P& p) noexcept {
            minX = std::min(minX, p.X());
            minY = std::min(minY, p.Y());
            maxX = std::max(maxX, p.X());
            maxY = std::max(maxY, p.Y());
        }
        T minX, minY, maxX, maxY;
    };

    // Strictly: boxes that touch are not apart.
    constexpr bool IsApartFrom(const Extents2D& other) const noexcept {
        return other.MinX() > MaxX() || MinX() > other.MaxX() || other.MinY() > MaxY() ||
               MinY() > other.MaxY();
    }
    constexpr bool Covers(const P& p) const noexcept {
        return MinX() <= p.X() && p.X() <= MaxX() && MinY() <= p.Y() && p.Y() <= MaxY();
    }
    constexpr bool Covers(const Extents2D& other) const noexcept {
        return other.MinX() >= MinX() && other.MaxX() <= MaxX() && other.MinY() >= MinY() &&
               other.MaxY() <= MaxY();
    }

    P m_min{1, 1};
    P m_max{0, 0};
};

GTL_EXTERN_TEMPLATE(Extents2D<float>);
GTL_EXTERN_TEMPLATE(Extents2D<double>);

} // namespace GTL
