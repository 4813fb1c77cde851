// SPDX-License-Identifier: MIT
#include "UtilityDLL/GTL/UnitType.h"

#include <iterator>
#include <limits>

namespace {

constexpr std::wstring_view kNames[] = {L"mm", L"cm", L"m", L"inches", L"feet"};
constexpr std::int64_t kNumUnits = std::size(kNames);

// A length in the unit of the row times the entry is the length in the unit of the column. Stored as doubles
// to the last bit: 12 * 25.4 is 304.79999999999995 there, and results must match.
// clang-format off
constexpr double kFactors[] = {
    // mm                cm       m        inches                feet
    1.0,                 0.1,     0.001,   0.03937007874015748,  0.0032808398950131237, // mm
    10.0,                1.0,     0.01,    0.39370078740157477,  0.03280839895013123,   // cm
    1000.0,              100.0,   1.0,     39.37007874015748,    3.2808398950131235,    // m
    25.4,                2.54,    0.0254,  1.0,                  0.08333333333333333,   // inches
    304.79999999999995,  30.48,   0.3048,  12.0,                 1.0,                   // feet
};
// clang-format on
static_assert(std::size(kFactors) == kNumUnits * kNumUnits);

constexpr std::wstring_view kCategoryNames[] = {
    L"No Units",           L"System Units",        L"Speed Units",       L"Distance Units",
    L"Depth Units",        L"Volume Units",        L"Density Units",     L"Velocity Units",
    L"Production Units",   L"Height Units",        L"Pressure Units",    L"Power Units",
    L"Revolutions Units",  L"Weight Units",        L"Pitch Units",       L"Roll Units",
    L"Acceleration Units", L"Angular Rate Units",  L"Delivery Units",    L"Angular Units",
    L"Area Units",         L"Temperature Units",   L"Paper Units",       L"Force Units",
    L"KP Units",           L"Fuel Delivery Units", L"Fuel Volume Units",
};
static_assert(std::size(kCategoryNames) == 27);

} // namespace

std::wstring UnitType::AsString() const {
    return std::wstring(m_type >= 0 && m_type < kNumUnits ? kNames[m_type] : L"UNKNOWN");
}

double UnitType::Convert(U_TYPE from, U_TYPE to, double value) noexcept {
    if (from == to) return value;
    const std::int64_t index = from * kNumUnits + to; // 64 bits wide: an int would wrap into the table
    const bool isInTable = index >= 0 && index < static_cast<std::int64_t>(std::size(kFactors));
    return isInTable ? value * kFactors[index] : std::numeric_limits<double>::quiet_NaN();
}

std::span<const std::wstring_view> UnitCategoryNames() noexcept { return kCategoryNames; }
