#pragma once

#include "UtilityDLL/Export.h"
#include "UtilityDLL/colors/RGBColor.h"

#include <concepts>

/// A colour as hue (degrees in [0, 360), or UNDEFINED_HUE for a grey), saturation and value (0 to 1). The
/// form to compute in; nothing is checked but for a hue of exactly 360, which is stored as 0.
class UTILITYDLL_API HSVColor {
public:
    /// Marks a grey, whose saturation is 0.
    static constexpr float UNDEFINED_HUE = -1.0f;

    /// All three components 0.
    HSVColor() = default;
    HSVColor(float hue, float saturation, float value) : m_saturation(saturation), m_value(value) {
        SetHue(hue);
    }
    HSVColor(const RGBColor& color);

    /// From a colour reference.
    template <ColorNumber Number> HSVColor(Number colorref) : HSVColor(RGBColor(colorref)) {}

    float Hue() const { return m_hue; }
    float Saturation() const { return m_saturation; }
    float Value() const { return m_value; }

    void SetHue(float hue) { m_hue = hue == 360.0f ? 0.0f : hue; }
    void SetSaturation(float saturation) { m_saturation = saturation; }
    void SetValue(float value) { m_value = value; }

    /// Components are truncated, so a way there and back may lose one unit. With saturation 0 the undefined
    /// hue gives a grey, but any other hue gives black. So do a hue of 360 and above and one below 0 that is
    /// not UNDEFINED_HUE.
    operator RGBColor() const;
    operator unsigned long() const { return static_cast<RGBColor>(*this); }

    /// Two of these have no equality, since floats computed in different ways rarely meet: compare the
    /// colours that they convert to. A template, so that a comparison with an RGBColor goes by that.
    template <std::same_as<HSVColor> Other> bool operator==(const Other& other) const = delete;

private:
    float m_hue = 0.0f;
    float m_saturation = 0.0f;
    float m_value = 0.0f;
};
