// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/GTL/Angle.h"
#include "UtilityDLL/GTL/Element.h"
#include "UtilityDLL/GTL/ExternTemplate.h"
#include "UtilityDLL/GTL/GeoPrimitive.h"
#include "UtilityDLL/GTL/Transformation2D.h"

namespace GTL {

/// A rectangle, perhaps rotated: the area that a text occupies. Corner 0 is its origin (lower left before the
/// rotation), corner 1 lies along the width from it, corner 3 along the height, corner 2 opposite. The
/// rotation turns it clockwise, with y up, about the origin.
///
/// Width, height and rotation are those of the construction: moving corners does not change them. For points
/// of int, corners are rounded to the nearest integer, and so are the sides as Width() and Height() give
/// them.
template <typename P> class Rectangle : public GeoPrimitive<P, 4> {
public:
    using T = typename P::ElementType; ///< of a corner's coordinate

    /// An empty rectangle at (0, 0).
    Rectangle() noexcept = default;

    /// A rectangle with corner 0 at `origin` and the others where width, height and rotation put them.
    Rectangle(const P& origin, double width, double height, const Angle& rotation) noexcept;

    /// What the rectangle was made with; the sides in the points' units.
    /// @{
    T Width() const noexcept { return ELEMENT::FromDouble<T>(m_width); }
    T Height() const noexcept { return ELEMENT::FromDouble<T>(m_height); }
    const Angle& Rotation() const noexcept { return m_rotation; }
    /// @}

    /// Whether the point lies within the sides or on them. Never INVALID: nothing is inside a rectangle with
    /// a negative side.
    ///
    /// A rectangle without rotation is compared exactly. The corners of a rotated one, and points computed on
    /// its edges, are rounded and so lie beside its sides more often than on them; all of them are inside.
    /// For that, a side reaches as far out as the constructor rounds its corners to, and a point may lie
    /// farther out by as much as rounding moves it: half a unit in x and in y for int; else, in each,
    /// 4 * epsilon of the element type times the sum of width, height and the larger of the origin's |x| and
    /// |y| (half a nanometre for doubles at half a million metres, a quarter of a metre for floats).
    CLS::CLASSIFICATION Classify(const P& point) const override {
        return Contains(point) ? CLS::INSIDE : CLS::OUTSIDE;
    }

private:
    bool Contains(const P& point) const noexcept;

    Angle m_rotation;
    double m_width = 0.0;
    double m_height = 0.0;
};

GTL_EXTERN_TEMPLATE(Rectangle<Point2D<int>>);
GTL_EXTERN_TEMPLATE(Rectangle<Point2D<float>>);
GTL_EXTERN_TEMPLATE(Rectangle<Point2D<double>>);

} // namespace GTL
