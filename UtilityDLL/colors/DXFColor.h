// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/Export.h"
#include "UtilityDLL/colors/RGBColor.h"

#include <concepts>
#include <cstdint>

/// A number that is an index into the palette: one that is signed once it is promoted as in arithmetic. So
/// are int, long, every narrower type, bool and most enumerations. Other numbers (unsigned int, unsigned
/// long) are colour references.
template <typename Number>
concept PaletteIndex = ColorNumber<Number> && std::signed_integral<decltype(+Number())>;

/// A colour of the DXF drawing format: an index, 0 to 255, into the format's fixed palette; 0 at first.
///
/// Two peculiarities of the palette are meant: index 7, named white, is as black as index 0, and the half
/// saturated colours are not exactly half (index 11 is FF827F).
class UTILITYDLL_API DXFColor {
public:
    /// The colours of the palette that have names, index 0 to 7.
    /// @{
    static const DXFColor _BLACK, _RED, _YELLOW, _GREEN, _CYAN, _BLUE, _MAGENTA, _WHITE; // 0 to 7
    /// @}

    constexpr DXFColor() = default; ///< index 0

    /// An index; 0 for one outside 0 to 255.
    template <PaletteIndex Number>
    constexpr DXFColor(Number index)
        : m_index(+index >= 0 && +index <= 255 ? static_cast<std::uint8_t>(index) : std::uint8_t(0)) {}

    /// The index nearest to a colour. Black is 0, white is 7, and the greys between are 250 to 254. Any other
    /// colour goes by its hue in steps of 15 degrees, its brightness in five steps, and whether its
    /// saturation is at least one half. A hue past 352.5 degrees counts as a 25th step: it lands on a grey
    /// (250 to 255) or, where that exceeds 255, on 0. Drawings rely on both.
    DXFColor(const RGBColor& color) : DXFColor(NearestIndex(color)) {}

    /// The index nearest to a colour reference.
    template <ColorNumber Number> DXFColor(Number colorref) : DXFColor(RGBColor(colorref)) {}

    /// The index, from 0 to 255.
    /// @{
    constexpr int Index() const { return m_index; }
    constexpr operator int() const { return m_index; }
    /// @}

    /// The palette's colour of the index, also as a colour reference.
    /// @{
    operator RGBColor() const { return RGBColor(static_cast<unsigned long>(*this)); }
    operator unsigned long() const;
    /// @}

    /// Whether the indices are equal.
    constexpr bool operator==(const DXFColor& other) const = default;

    /// With a number as the constructors take one: an index is compared with this one's, and one outside the
    /// palette equals none; a colour reference is compared with the palette's colour of the index, as a
    /// colour is.
    /// @{
    template <PaletteIndex Number> constexpr bool operator==(Number index) const { return +index == m_index; }
    template <ColorNumber Number> bool operator==(Number colorref) const {
        return *this == RGBColor(colorref);
    }
    bool operator==(const RGBColor& color) const { return static_cast<RGBColor>(*this) == color; }
    /// @}

private:
    static int NearestIndex(const RGBColor& color);

    std::uint8_t m_index = 0;
};
