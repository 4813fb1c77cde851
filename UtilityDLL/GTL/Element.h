// SPDX-License-Identifier: MIT
#pragma once

#include "VelmBase/Math.h"

#include <cmath>
#include <limits>
#include <type_traits>

/// Arithmetic on the element types of points and vectors. Floating-point types have their plain operators;
/// integers wrap at their width, so that no input is undefined behaviour.
namespace GTL::ELEMENT {

/// The sum, the difference and the product; an integer keeps the low bits of its width.
/// @{
template <typename T> constexpr T Sum(T a, T b) noexcept {
    if constexpr (std::is_integral_v<T>) {
        using Wrapping = std::make_unsigned_t<T>;
        return static_cast<T>(static_cast<Wrapping>(a) + static_cast<Wrapping>(b));
    } else {
        return a + b;
    }
}

template <typename T> constexpr T Difference(T a, T b) noexcept {
    if constexpr (std::is_integral_v<T>) {
        using Wrapping = std::make_unsigned_t<T>;
        return static_cast<T>(static_cast<Wrapping>(a) - static_cast<Wrapping>(b));
    } else {
        return a - b;
    }
}

template <typename T> constexpr T Product(T a, T b) noexcept {
    if constexpr (std::is_integral_v<T>) {
        using Wrapping = std::make_unsigned_t<T>;
        return static_cast<T>(static_cast<Wrapping>(a) * static_cast<Wrapping>(b));
    } else {
        return a * b;
    }
}
/// @}

/// Integers divide toward zero; by 0 they give the lowest value, as a conversion of the infinite quotient
/// would.
template <typename T> constexpr T Quotient(T a, T b) noexcept {
    if constexpr (std::is_integral_v<T>) {
        if (b == 0) return std::numeric_limits<T>::min();
        return b == -1 ? Difference(T{0}, a) : a / b; // the lowest value / -1 does not fit and wraps
    } else {
        return a / b;
    }
}

/// floor(value + 0.5): the nearest integer, halves upward. NaN and values beyond int give -2147483648.
inline int Rounded(double value) noexcept { return MATH::ToInt(std::floor(value + 0.5)); }

/// A computed coordinate as an element: rounded for int, narrowed for float.
template <typename T> T FromDouble(double value) noexcept {
    if constexpr (std::is_integral_v<T>) {
        return Rounded(value);
    } else {
        return static_cast<T>(value);
    }
}

} // namespace GTL::ELEMENT
