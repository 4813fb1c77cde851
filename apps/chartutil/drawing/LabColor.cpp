// SPDX-License-Identifier: MIT
#include "apps/chartutil/drawing/LabColor.h"

#include <cmath>

namespace {

constexpr double kDegree = 0.017453292519943295;

// The intensity of a component of sRGB, 0 to 1.
double Linear(int component) {
    const double share = component / 255.0;
    return share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
}

// A tristimulus value as a share of white's on the scale of lightness.
double Compressed(double share) {
    constexpr double kBend = 6.0 / 29;
    return share > kBend * kBend * kBend ? std::cbrt(share) : share / (3 * kBend * kBend) + 4.0 / 29;
}

// White has all three components at 1, so that it is exactly neutral.
double ShareOfWhite(const double (&weights)[3], const double (&rgb)[3]) {
    return (weights[0] * rgb[0] + weights[1] * rgb[1] + weights[2] * rgb[2]) /
           (weights[0] + weights[1] + weights[2]);
}

double SeventhPowerShare(double chroma) {
    constexpr double kPowerOf25 = 6103515625; // 25^7
    const double power = std::pow(chroma, 7);
    return std::sqrt(power / (power + kPowerOf25));
}

// A colour by lightness, chroma and hue in degrees, 0 to 360.
struct Polar {
    double lightness, chroma, hue;

    Polar(const LabColor& color, double stretch) : lightness(color.lightness) {
        const double a = color.greenRed * stretch;
        chroma = std::hypot(a, color.blueYellow);
        hue = std::atan2(color.blueYellow, a) / kDegree;
        if (hue < 0) hue += 360;
    }
};

double Cosine(double degrees) { return std::cos(degrees * kDegree); }

// Half way on the shorter arc. Where one colour is grey it does not count: there is no difference of hue.
double MeanHue(const Polar& a, const Polar& b) {
    const double sum = a.hue + b.hue;
    if (std::fabs(a.hue - b.hue) <= 180) return sum / 2;
    return (sum < 360 ? sum + 360 : sum - 360) / 2;
}

// As a length, like the differences of lightness and chroma.
double HueDifference(const Polar& a, const Polar& b) {
    double turn = b.hue - a.hue;
    if (turn > 180) turn -= 360;
    if (turn < -180) turn += 360;
    return 2 * std::sqrt(a.chroma * b.chroma) * std::sin(turn / 2 * kDegree);
}

double Square(double value) { return value * value; }

} // namespace

LabColor::LabColor(const RGBColor& color) {
    const double rgb[] = {Linear(color.Red()), Linear(color.Green()), Linear(color.Blue())};
    const double x = Compressed(ShareOfWhite({0.4124564, 0.3575761, 0.1804375}, rgb));
    const double y = Compressed(ShareOfWhite({0.2126729, 0.7151522, 0.0721750}, rgb));
    const double z = Compressed(ShareOfWhite({0.0193339, 0.1191920, 0.9503041}, rgb));
    lightness = 116 * y - 16;
    greenRed = 500 * (x - y);
    blueYellow = 200 * (y - z);
}

double ColorDifference(const LabColor& a, const LabColor& b) {
    const auto chroma = [](const LabColor& color) { return std::hypot(color.greenRed, color.blueYellow); };
    const double stretch = 1.5 - 0.5 * SeventhPowerShare((chroma(a) + chroma(b)) / 2);
    const Polar p(a, stretch), q(b, stretch);

    const double meanChroma = (p.chroma + q.chroma) / 2;
    const double meanHue = MeanHue(p, q);
    const double fromMiddle = Square((p.lightness + q.lightness) / 2 - 50);
    const double hueWeight = 1 - 0.17 * Cosine(meanHue - 30) + 0.24 * Cosine(2 * meanHue) +
                             0.32 * Cosine(3 * meanHue + 6) - 0.20 * Cosine(4 * meanHue - 63);

    const double lightness =
        (q.lightness - p.lightness) / (1 + 0.015 * fromMiddle / std::sqrt(20 + fromMiddle));
    const double chromas = (q.chroma - p.chroma) / (1 + 0.045 * meanChroma);
    const double hues = HueDifference(p, q) / (1 + 0.015 * meanChroma * hueWeight);

    // In blues, hue and chroma are not seen apart.
    const double turn = 60 * std::exp(-Square((meanHue - 275) / 25));
    const double rotation = -2 * SeventhPowerShare(meanChroma) * std::sin(turn * kDegree);
    const double sum = Square(lightness) + Square(chromas) + Square(hues) + rotation * chromas * hues;
    return std::sqrt(std::fmax(0, sum));
}
