// SPDX-License-Identifier: MIT
#include "apps/chartutil/drawing/Layout.h"

#include "apps/chartutil/drawing/LabColor.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr RGBColor kOutline(150, 150, 150);
constexpr double kOutlineWidth = 0.15;

// As far beyond `end` as an outline is wide, coming from `before`.
Surface::Point Beyond(const Surface::Point& end, const Surface::Point& before) {
    const double x = end.x - before.x, y = end.y - before.y, length = std::hypot(x, y);
    if (!(length > 0)) return end;
    return {end.x + x / length * kOutlineWidth, end.y + y / length * kOutlineWidth};
}

// Dashes grow by an outline at each end, at the cost of the gaps between them.
std::vector<double> GrownDashes(std::vector<double> dashes) {
    for (std::size_t i = 0; i < dashes.size(); ++i) dashes[i] += (i % 2 == 0 ? 2 : -2) * kOutlineWidth;
    if (std::ranges::any_of(dashes, [](double length) { return length <= 0; })) dashes.clear();
    return dashes;
}

} // namespace

bool IsPale(const RGBColor& color) {
    constexpr double kLightest = 85; // from there on the contrast to white is below 1.5
    return LabColor(color).lightness > kLightest;
}

void DrawSwatch(Surface& surface, double x, double y, double width, double height, const RGBColor& color) {
    surface.Rectangle(x, y, width, height, color);
    if (!IsPale(color)) return;
    constexpr double kInset = kOutlineWidth / 2;
    surface.Frame(x + kInset, y + kInset, width - kOutlineWidth, height - kOutlineWidth,
                  {kOutline, kOutlineWidth});
}

void DrawSample(Surface& surface, const std::vector<Surface::Point>& points, const Surface::Pen& pen) {
    if (points.size() >= 2 && IsPale(pen.color)) {
        std::vector<Surface::Point> outline = points;
        outline.front() = Beyond(points[0], points[1]);
        outline.back() = Beyond(points.back(), points[points.size() - 2]);
        surface.Polyline(std::move(outline),
                         {kOutline, pen.width + 2 * kOutlineWidth, GrownDashes(pen.dashes)});
    }
    surface.Polyline(points, pen);
}
