// SPDX-License-Identifier: MIT
#include "apps/chartutil/drawing/Surface.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

double Finite(double value) { return std::isfinite(value) ? value : 0.0; }

std::vector<Surface::Point> Finite(std::vector<Surface::Point> points) {
    for (Surface::Point& point : points) point = {Finite(point.x), Finite(point.y)};
    return points;
}

// A dash pattern that cannot be drawn is a solid line.
Surface::Pen Usable(Surface::Pen pen) {
    pen.width = std::max(0.0, Finite(pen.width));
    const auto isLength = [](double dash) { return std::isfinite(dash) && dash > 0; };
    if (!std::ranges::all_of(pen.dashes, isLength)) pen.dashes.clear();
    return pen;
}

Font Usable(Font font) {
    font.size = std::max(0.0, Finite(font.size));
    return font;
}

} // namespace

Surface::Surface(double width, double height)
    : m_width(std::clamp(width, 1.0, 5000.0)), m_height(std::clamp(height, 1.0, 5000.0)) {}

void Surface::Rectangle(double x, double y, double width, double height, const RGBColor& fill) {
    m_shapes.emplace_back(FilledRectangle{Finite(x), Finite(y), Finite(width), Finite(height), fill});
}

void Surface::Picture(Image image) {
    if (!image.png.empty()) m_shapes.emplace_back(std::move(image));
}

void Surface::BeginLayer(std::string_view name) { m_shapes.emplace_back(Layer{std::string(name)}); }

void Surface::Frame(double x, double y, double width, double height, const Pen& pen) {
    m_shapes.emplace_back(Stroke{Finite({{x, y}, {x + width, y}, {x + width, y + height}, {x, y + height}}),
                                 true, Usable(pen)});
}

void Surface::Line(double x1, double y1, double x2, double y2, const Pen& pen) {
    Polyline({{x1, y1}, {x2, y2}}, pen);
}

void Surface::Polyline(std::vector<Point> points, const Pen& pen) {
    if (points.size() >= 2) m_shapes.emplace_back(Stroke{Finite(std::move(points)), false, Usable(pen)});
}

void Surface::Polygon(std::vector<std::vector<Point>> rings, const RGBColor& fill) {
    std::erase_if(rings, [](const std::vector<Point>& ring) { return ring.size() < 3; });
    for (std::vector<Point>& ring : rings) ring = Finite(std::move(ring));
    if (!rings.empty()) m_shapes.emplace_back(FilledPolygon{std::move(rings), fill});
}

void Surface::Text(double x, double y, std::string_view text, const Font& font, const RGBColor& color,
                   Anchor anchor, double rotation) {
    m_shapes.emplace_back(Label{Finite(x),
                                Finite(y),
                                std::string(text),
                                Usable(font),
                                color,
                                anchor,
                                Finite(rotation),
                                Usable(font).Width(text),
                                false,
                                {static_cast<int>(anchor), 0}});
}

void Surface::FittedText(double x, double y, std::string_view text, const Font& font, const RGBColor& color,
                         double width, double rotation, Justification justification) {
    if (Finite(width) <= 0) return;
    const auto [horizontal, vertical] = justification;
    m_shapes.emplace_back(Label{
        Finite(x),
        Finite(y),
        std::string(text),
        Usable(font),
        color,
        Anchor::START,
        Finite(rotation),
        width,
        true,
        {horizontal < 0 || horizontal > 2 ? 0 : horizontal, vertical < 0 || vertical > 3 ? 0 : vertical}});
}
