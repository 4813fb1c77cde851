// SPDX-License-Identifier: MIT
#include "UtilityDLL/GTL/Rectangle.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <type_traits>

namespace GTL {

namespace {

// The directions of the sides: a plane turned clockwise, with y up.
struct Turn {
    explicit Turn(const Angle& rotation) noexcept : sine(rotation.Sin()), cosine(rotation.Cos()) {}

    double Along(double dx, double dy) const noexcept { return dx * cosine - dy * sine; }
    double Up(double dx, double dy) const noexcept { return dx * sine + dy * cosine; }

    // The point that lies so far from the origin in these directions.
    template <typename P> P At(const P& origin, double along, double up) const noexcept {
        using T = typename P::ElementType;
        return P(ELEMENT::FromDouble<T>(origin.X() + (along * cosine + up * sine)),
                 ELEMENT::FromDouble<T>(origin.Y() + (up * cosine - along * sine)));
    }

    double sine, cosine;
};

// How far rounding may have moved each coordinate of a point that was computed on an edge of such a
// rectangle.
template <typename P> double Rounding(const P& origin, double width, double height) noexcept {
    using T = typename P::ElementType;
    if constexpr (std::is_integral_v<T>) {
        return 0.5 + 1e-5; // and what the doubles lose, in which integers are computed
    } else {
        const double sides = std::isfinite(width + height) ? width + height : 0.0;
        const double size = std::max(std::fabs(origin.X()), std::fabs(origin.Y())) + sides;
        return 4.0 * static_cast<double>(std::numeric_limits<T>::epsilon()) * size;
    }
}

} // namespace

template <typename P>
Rectangle<P>::Rectangle(const P& origin, double width, double height, const Angle& rotation) noexcept
    : m_rotation(rotation), m_width(width), m_height(height) {
    const Turn turn(rotation);
    this->SetCorner(0, origin);
    this->SetCorner(1, turn.At(origin, width, 0));
    this->SetCorner(2, turn.At(origin, width, height));
    this->SetCorner(3, turn.At(origin, 0, height));
}

template <typename P> bool Rectangle<P>::Contains(const P& point) const noexcept {
    const P& origin = this->Corner(0);
    if (m_rotation.Get() == 0.0) {
        return origin.X() <= point.X() && point.X() <= this->Corner(1).X() && origin.Y() <= point.Y() &&
               point.Y() <= this->Corner(3).Y();
    }
    if (!(Width() >= 0 && Height() >= 0)) return false;

    // As far out as the corners are rounded to: recomputed, since those that are held may have been moved. An
    // infinite side makes coordinates that are not a number, which take no part.
    const Turn turn(m_rotation);
    struct Range {
        double low, high;
        void Take(double value) noexcept {
            low = std::min(low, value);
            high = std::max(high, value);
        }
        bool Holds(double value, double slack) const noexcept {
            return low - slack <= value && value <= high + slack;
        }
    } along{0.0, m_width}, up{0.0, m_height};
    const auto dx = [&](const P& p) { return static_cast<double>(p.X()) - static_cast<double>(origin.X()); };
    const auto dy = [&](const P& p) { return static_cast<double>(p.Y()) - static_cast<double>(origin.Y()); };
    for (const P& corner :
         {turn.At(origin, m_width, 0), turn.At(origin, m_width, m_height), turn.At(origin, 0, m_height)}) {
        along.Take(turn.Along(dx(corner), dy(corner)));
        up.Take(turn.Up(dx(corner), dy(corner)));
    }
    const double slack =
        Rounding(origin, m_width, m_height) * (std::fabs(turn.sine) + std::fabs(turn.cosine));
    return along.Holds(turn.Along(dx(point), dy(point)), slack) &&
           up.Holds(turn.Up(dx(point), dy(point)), slack);
}

} // namespace GTL

GTL_TEMPLATE(GTL::Rectangle<GTL::Point2D<int>>);
GTL_TEMPLATE(GTL::Rectangle<GTL::Point2D<float>>);
GTL_TEMPLATE(GTL::Rectangle<GTL::Point2D<double>>);
