// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/colors/RGBColor.h"

/// A colour as the eye sees it, in the CIELAB space: lightness from 0 (black) to 100 (white), green to red
/// and blue to yellow. Equal steps look more alike there than in RGB.
struct LabColor {
    double lightness = 0;
    double greenRed = 0;
    double blueYellow = 0;

    LabColor() = default;
    LabColor(double l, double a, double b) : lightness(l), greenRed(a), blueYellow(b) {}

    /// That of a screen's colour (sRGB, IEC 61966-2-1), seen against the screen's white.
    explicit LabColor(const RGBColor& color);
};

/// How different two colours look: 0 for equal ones, about 1 for what is just seen side by side, 100 for
/// black and white. By the formula CIEDE2000 with all its weights 1, as in G. Sharma, W. Wu, E. N. Dalal:
/// "The CIEDE2000 Color-Difference Formula: Implementation Notes, Supplementary Test Data, and Mathematical
/// Observations", Color Research and Application 30 (2005).
double ColorDifference(const LabColor& a, const LabColor& b);

/// The same for two colours of a screen.
inline double ColorDifference(const RGBColor& a, const RGBColor& b) {
    return ColorDifference(LabColor(a), LabColor(b));
}
