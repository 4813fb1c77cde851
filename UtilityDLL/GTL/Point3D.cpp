// SPDX-License-Identifier: MIT
#include "UtilityDLL/GTL/Point3D.h"

#include <cmath>

template <typename T> double GTL::Point3D<T>::Dist3D(const Point3D& other, bool squared) const noexcept {
    const T dx = X() - other.X();
    const T dy = Y() - other.Y();
    const T dz = m_z - other.m_z;
    const T square = dx * dx + dy * dy + dz * dz;
    return squared ? square : std::sqrt(square);
}

GTL_TEMPLATE(GTL::Point3D<float>);
GTL_TEMPLATE(GTL::Point3D<double>);

GTL_TEMPLATE(GTL::Transformation<GTL::Point3D<float>>);
GTL_TEMPLATE(GTL::Transformation<GTL::Point3D<double>>);
