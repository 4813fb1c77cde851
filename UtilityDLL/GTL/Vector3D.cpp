// SPDX-License-Identifier: MIT
#include "UtilityDLL/GTL/Vector3D.h"

#include "VelmBase/Math.h"

#include <algorithm>
#include <cmath>

namespace GTL {

template <typename T> Angle Vector3D<T>::Bearing() const noexcept {
    const double degrees = std::atan2(static_cast<double>(m_x), static_cast<double>(m_y)) * MATH::RTD;
    return degrees < 0.0 ? degrees + 360.0 : degrees;
}

template <typename T> Angle Vector3D<T>::AngleTo(const Vector3D& other) const noexcept {
    const double cosine = static_cast<double>(Dot(other)) /
                          (static_cast<double>(Length()) * static_cast<double>(other.Length()));
    return std::acos(std::clamp(cosine, -1.0, 1.0)) * MATH::RTD;
}

template <typename T> T Vector3D<T>::Length() const noexcept { return std::sqrt(Dot(*this)); }

template <typename T> Vector3D<T> Vector3D<T>::Cross(const Vector3D& o) const noexcept {
    return {m_y * o.m_z - m_z * o.m_y, m_z * o.m_x - m_x * o.m_z, m_x * o.m_y - m_y * o.m_x};
}

template <typename T> T Vector3D<T>::Dot(const Vector3D& o) const noexcept {
    return m_x * o.m_x + m_y * o.m_y + m_z * o.m_z;
}

} // namespace GTL

GTL_TEMPLATE(GTL::Vector3D<float>);
GTL_TEMPLATE(GTL::Vector3D<double>);
