// SPDX-License-Identifier: MIT
#include "UtilityDLL/GTL/Point2D.h"

#include <cmath>

template <typename T> double GTL::Point2D<T>::Dist2D(const Point2D& other, bool squared) const noexcept {
    const T dx = ELEMENT::Difference(m_x, other.m_x);
    const T dy = ELEMENT::Difference(m_y, other.m_y);
    const double square = ELEMENT::Sum(ELEMENT::Product(dx, dx), ELEMENT::Product(dy, dy));
    return squared ? square : std::sqrt(square);
}

GTL_TEMPLATE(GTL::Point2D<int>);
GTL_TEMPLATE(GTL::Point2D<float>);
GTL_TEMPLATE(GTL::Point2D<double>);

// Here, since a point's header needs the mapping's, and an instance needs the point.
GTL_TEMPLATE(GTL::Transformation<GTL::Point2D<int>>);
GTL_TEMPLATE(GTL::Transformation<GTL::Point2D<float>>);
GTL_TEMPLATE(GTL::Transformation<GTL::Point2D<double>>);
