// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/Export.h"

#include <concepts>
#include <cstdint>
#include <type_traits>

/// What counts as a number where a colour is made of one or compared with one: the integers, and the
/// enumerations that convert to them. What has a conversion to a number of its own does not: DXFColor has one
/// to a number as well as to a colour, and it is the colour that counts.
template <typename Number>
concept ColorNumber = std::integral<Number> ||
    (std::is_enum_v<Number>&& std::is_convertible_v<Number, long long>);

/// A colour as three components of 8 bits. Black by default.
///
/// It converts from and to the 32-bit colour reference: red in bits 0 to 7, green in 8 to 15, blue in 16 to
/// 23. Bits 24 and above are ignored when reading and written as 0.
class RGBColor {
public:
    constexpr RGBColor() = default; ///< black

    /// Each component keeps its low eight bits: 256 gives 0 and -1 gives 255.
    constexpr RGBColor(int red, int green, int blue)
        : m_red(Component(red)), m_green(Component(green)), m_blue(Component(blue)) {}

    /// From a colour reference.
    template <ColorNumber Number>
    constexpr RGBColor(Number colorref)
        : RGBColor(static_cast<int>(colorref & 0xFF), static_cast<int>(colorref >> 8 & 0xFF),
                   static_cast<int>(colorref >> 16 & 0xFF)) {}

    /// The components, 0 to 255.
    /// @{
    constexpr int Red() const { return m_red; }
    constexpr int Green() const { return m_green; }
    constexpr int Blue() const { return m_blue; }
    /// @}

    /// As the constructor, these keep the low eight bits.
    /// @{
    constexpr void SetRed(int red) { m_red = Component(red); }
    constexpr void SetGreen(int green) { m_green = Component(green); }
    constexpr void SetBlue(int blue) { m_blue = Component(blue); }
    /// @}

    /// The colour reference.
    constexpr operator unsigned long() const {
        return static_cast<unsigned long>(m_red | m_green << 8 | m_blue << 16);
    }

    /// Whether all components are equal.
    constexpr bool operator==(const RGBColor& other) const = default;

    /// With the colour of a colour reference.
    template <ColorNumber Number> constexpr bool operator==(Number colorref) const {
        return *this == RGBColor(colorref);
    }

    /// The largest component.
    static constexpr int MAX_VALUE() { return 255; }

    /// The grey of the same brightness, 0.3 red + 0.59 green + 0.11 blue truncated; a grey stays as it is.
    UTILITYDLL_API RGBColor GrayScale() const;

private:
    // Every value is taken; hosts rely on the wrap-around.
    static constexpr void AssertValidComponent(int /*component*/) {}

    static constexpr std::uint8_t Component(int component) {
        AssertValidComponent(component);
        return static_cast<std::uint8_t>(component & 0xFF);
    }

    std::uint8_t m_red = 0;
    std::uint8_t m_green = 0;
    std::uint8_t m_blue = 0;
};
