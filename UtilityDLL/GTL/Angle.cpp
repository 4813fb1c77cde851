// SPDX-License-Identifier: MIT
#include "UtilityDLL/GTL/Angle.h"

#include <cmath>

double Angle::Sin() const noexcept { return std::sin(Rad()); }
double Angle::Cos() const noexcept { return std::cos(Rad()); }
double Angle::Tan() const noexcept { return std::tan(Rad()); }

void Angle::Set(double degrees) noexcept {
    m_degrees = std::fmod(degrees, 360.0);
    if (m_degrees < 0.0) m_degrees += 360.0;
}
