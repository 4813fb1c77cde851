// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/Export.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

/// A unit of length. Numbers outside the five units can be stored; they have no name and convert to NaN, or
/// to what the table holds where they happen to fall into it.
class UTILITYDLL_API UnitType {
public:
    /// The units: millimetres, centimetres, metres, inches of 25.4 mm, feet of 12 inches.
    enum U_TYPE : std::int32_t { MM = 0, CM = 1, M = 2, INCHES = 3, FEET = 4 };

    /// Millimetres.
    constexpr UnitType() noexcept = default;

    /// The unit of that number.
    constexpr UnitType(U_TYPE type) noexcept : m_type(type) {}

    /// The unit.
    /// @{
    constexpr U_TYPE GetType() const noexcept { return m_type; }
    constexpr void SetType(U_TYPE type) noexcept { m_type = type; }
    /// @}

    /// "mm", "cm", "m", "inches" or "feet"; "UNKNOWN" for any other number.
    std::wstring AsString() const;

    /// A length in this unit as one in the unit `to`.
    double Convert(U_TYPE to, double value) const noexcept { return Convert(m_type, to, value); }

    /// A length in one unit as one in another. Equal units give `value` back, whatever their number. Else it
    /// is multiplied by entry from * 5 + to of the table of factors; where that lies outside, the result is
    /// NaN.
    static double Convert(U_TYPE from, U_TYPE to, double value) noexcept;

private:
    U_TYPE m_type = MM;
};

/// The suite's names for its categories of units, in their fixed order.
UTILITYDLL_API std::span<const std::wstring_view> UnitCategoryNames() noexcept;
