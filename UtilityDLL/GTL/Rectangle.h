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
/// Width, height and rotation are those of the construction: moving corners does not change them.
template <typename P> class Rectangle : public GeoPrimitive<P, 4> {
public:
    using T = typename P::ElementType;

    /// An empty rectangle at (0, 0).
    Rectangle() noexcept = default;

    /// For points of int, corners and sides are rounded to the nearest integer.
    Rectangle(const P& origin, double width, double height, const Angle& rotation) noexcept
        : m_rotation(rotation), m_width(ELEMENT::FromDouble<T>(width)),
          m_height(ELEMENT::FromDouble<T>(height)) {
        const double sine = rotation.Sin();
        const double cosine = rotation.Cos();
        const auto at = [&](double along, double up) {
            return P(ELEMENT::FromDouble<T>(origin.X() + (along * cosine + up * sine)),
                     ELEMENT::FromDouble<T>(origin.Y() + (up * cosine - along * sine)));
        };
        this->SetCorner(0, origin);
        this->SetCorner(1, at(width, 0));
        this->SetCorner(2, at(width, height));
        this->SetCorner(3, at(0, height));
    }

    T Width() const noexcept { return m_width; }
    T Height() const noexcept { return m_height; }
    const Angle& Rotation() const noexcept { return m_rotation; }

    /// Whether the point, turned back about the origin, lies within the sides. Never INVALID: nothing is
    /// inside a rectangle with a negative side.
    CLS::CLASSIFICATION Classify(const P& point) const override {
        return Contains(point) ? CLS::INSIDE : CLS::OUTSIDE;
    }

private:
    bool Contains(const P& point) const noexcept {
        const P& origin = this->Corner(0);
        if (m_rotation.Get() == 0.0) {
            return origin.X() <= point.X() && point.X() <= this->Corner(1).X() && origin.Y() <= point.Y() &&
                   point.Y() <= this->Corner(3).Y();
        }
        Transformation2D<P> unrotation;
        unrotation.Rotate(-m_rotation, origin);
        P upright = point;
        unrotation.Apply(upright);
        const double along = static_cast<double>(upright.X()) - static_cast<double>(origin.X());
        const double up = static_cast<double>(upright.Y()) - static_cast<double>(origin.Y());
        return 0.0 <= along && along <= m_width && 0.0 <= up && up <= m_height;
    }

    Angle m_rotation;
    T m_width{};
    T m_height{};
};

GTL_EXTERN_TEMPLATE(Rectangle<Point2D<int>>);
GTL_EXTERN_TEMPLATE(Rectangle<Point2D<float>>);
GTL_EXTERN_TEMPLATE(Rectangle<Point2D<double>>);

} // namespace GTL
