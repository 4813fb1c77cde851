// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/GTL/ExternTemplate.h"

namespace GTL {

/// A planar displacement: what points differ by and are moved by.
template <typename T> class Vector2D {
public:
    using ElementType = T; ///< of a component

    constexpr Vector2D() noexcept = default; ///< (0, 0)

    /// A displacement by so much in x and in y.
    constexpr Vector2D(T x, T y) noexcept : m_x(x), m_y(y) {}

    /// The components, in the caller's units.
    /// @{
    constexpr T X() const noexcept { return m_x; }
    constexpr T Y() const noexcept { return m_y; }
    constexpr void X(T x) noexcept { m_x = x; }
    constexpr void Y(T y) noexcept { m_y = y; }
    /// @}

private:
    T m_x{};
    T m_y{};
};

GTL_EXTERN_TEMPLATE(Vector2D<int>);
GTL_EXTERN_TEMPLATE(Vector2D<float>);
GTL_EXTERN_TEMPLATE(Vector2D<double>);

} // namespace GTL
