// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/Export.h"
#include "UtilityDLL/colors/RGBColor.h"

#include <concepts>

/// A colour as hue (degrees in [0, 360), or UNDEFINED_HUE for a grey), saturation and value (0 to 1): the
/// form to compute in. Nothing is checked; a hue of exactly 360 is stored as 0.
class UTILITYDLL_API HSVColor {
public:
    /// Marks a grey, whose saturation is 0.
    static constexpr float UNDEFINED_HUE = -1.0f;

    /// All three components 0.
    HSVColor() = default;

    /// The components as they are given, but for a hue of 360.
    HSVColor(float hue, float saturation, float value) : m_saturation(saturation), m_value(value) {
        SetHue(hue);
    }

    /// The hue, saturation and value of a colour; of a grey the undefined hue.
    HSVColor(const RGBColor& color);

    /// From a colour reference.
    template <ColorNumber Number> HSVColor(Number colorref) : HSVColor(RGBColor(colorref)) {}

    /// The components.
    /// @{
    float Hue() const { return m_hue; }
    float Saturation() const { return m_saturation; }
    float Value() const { return m_value; }
    /// @}

    /// Stored as given, but for a hue of 360.
    /// @{
    void SetHue(float hue) { m_hue = hue == 360.0f ? 0.0f : hue; }
    void SetSaturation(float saturation) { m_saturation = saturation; }
    void SetValue(float value) { m_value = value; }
    /// @}

    /// Components are truncated, so a way there and back may lose one unit. With saturation 0 the undefined
    /// hue gives a grey and any other hue gives black. Hues of 360 and above, and those below 0 other than
    /// UNDEFINED_HUE, give black as well.
    /// @{
    operator RGBColor() const;
    operator unsigned long() const { return static_cast<RGBColor>(*this); }
    /// @}

    /// There is no equality: floats that were computed in different ways rarely meet. Compare the colours
    /// that they convert to, as the comparison with an RGBColor does.
    template <std::same_as<HSVColor> Other> bool operator==(const Other& other) const = delete;

private:
    float m_hue = 0.0f;
    float m_saturation = 0.0f;
    float m_value = 0.0f;
};
