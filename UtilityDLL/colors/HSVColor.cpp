// SPDX-License-Identifier: MIT
#include "UtilityDLL/colors/HSVColor.h"

#include "VelmBase/Math.h"

#include <algorithm>

// Exported, for hosts that bind a reference to it.
constexpr float HSVColor::UNDEFINED_HUE; // NOLINT(readability-redundant-declaration)

HSVColor::HSVColor(const RGBColor& color) {
    const float r = static_cast<float>(color.Red()) / 255.0f;
    const float g = static_cast<float>(color.Green()) / 255.0f;
    const float b = static_cast<float>(color.Blue()) / 255.0f;
    const float max = std::max({r, g, b});
    const float delta = max - std::min({r, g, b});

    m_value = max;
    m_saturation = max != 0.0f ? delta / max : 0.0f;
    if (m_saturation == 0.0f) {
        m_hue = UNDEFINED_HUE;
        return;
    }
    const float rc = (max - r) / delta;
    const float gc = (max - g) / delta;
    const float bc = (max - b) / delta;
    // In this order: where red and green are both the largest, red decides.
    const float sixths = r == max ? bc - gc : g == max ? 2.0f + rc - bc : 4.0f + gc - rc;
    const float hue = sixths * 60.0f;
    SetHue(hue < 0.0f ? hue + 360.0f : hue);
}

HSVColor::operator RGBColor() const {
    const auto truncated = [](float component) { return MATH::ToInt(static_cast<double>(component)); };
    const float scaled = m_value * 255.0f;
    const int v = truncated(scaled);
    if (m_saturation == 0.0f) return m_hue == UNDEFINED_HUE ? RGBColor(v, v, v) : RGBColor();
    if (m_hue < 0.0f && m_hue != UNDEFINED_HUE) return {};

    const float sixths = m_hue / 60.0f;
    const int sector = truncated(sixths);
    const float fraction = sixths - static_cast<float>(sector);
    const int p = truncated((1.0f - m_saturation) * scaled);
    const int q = truncated((1.0f - m_saturation * fraction) * scaled);
    const int t = truncated((1.0f - (1.0f - fraction) * m_saturation) * scaled);
    switch (sector) {
    case 0:
        return {v, t, p};
    case 1:
        return {q, v, p};
    case 2:
        return {p, v, t};
    case 3:
        return {p, q, v};
    case 4:
        return {t, p, v};
    case 5:
        return {v, p, q};
    default:
        return {};
    }
}
