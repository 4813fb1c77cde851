// SPDX-License-Identifier: MIT
#pragma once

#include "VelmBase/Export.h"

#include <algorithm>
#include <cmath>
#include <limits>

/// The numeric helpers of the suite.
namespace MATH {

/// The ratio of a circle's circumference to its diameter.
inline constexpr double PI = 3.14159265358979323846;
inline constexpr double DTR = PI / 180.0; ///< degrees to radians: multiply
inline constexpr double RTD = 180.0 / PI; ///< radians to degrees: multiply

/// Tolerant equality: a == b, or |a - b| <= 1e-9 * max(1, |a|, |b|). NaN equals nothing, and an infinity only
/// itself.
inline bool equal(double a, double b) noexcept {
    if (a == b) return true;
    if (std::isinf(a) || std::isinf(b)) return false;
    return std::fabs(a - b) <= 1e-9 * std::max({1.0, std::fabs(a), std::fabs(b)});
}

/// a < b and not equal within the tolerance.
inline bool less(double a, double b) noexcept { return a < b && !equal(a, b); }

/// The nearest integer value, halves away from zero.
inline double round(double value) noexcept { return std::round(value); }

/// `value` truncated toward zero. NaN and what does not fit give -2147483648, the integer indefinite value of
/// the processors that the suite was born on; here on every platform, and without undefined behaviour.
constexpr int ToInt(double value) noexcept {
    return value > -2147483649.0 && value < 2147483648.0 ? static_cast<int>(value)
                                                         : std::numeric_limits<int>::min();
}

} // namespace MATH

/// The number of significant digits of the shortest decimal text that reads back as `value`; 1 for 0, NaN and
/// infinity.
VELMBASE_API int GetDoublePrecision(double value);
