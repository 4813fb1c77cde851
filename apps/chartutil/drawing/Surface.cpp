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

} // namespace

Surface::Surface(double width, double height)
    : m_width(std::clamp(width, 1.0, 5000.0)), m_height(std::clamp(height, 1.0, 5000.0)) {}

void Surface::Rectangle(double x, double y, double width, double height, const RGBColor& fill) {
    m_shapes.emplace_back(FilledRectangle{Finite(x), Finite(y), Finite(width), Finite(height), fill});
}

void Surface::Frame(double x, double y, double width, double height, const Pen& pen) {
    m_shapes.emplace_back(
        Stroke{Finite({{x, y}, {x + width, y}, {x + width, y + height}, {x, y + height}}), true, pen});
}

void Surface::Line(double x1, double y1, double x2, double y2, const Pen& pen) {
    Polyline({{x1, y1}, {x2, y2}}, pen);
}

void Surface::Polyline(std::vector<Point> points, const Pen& pen) {
    if (points.size() >= 2) m_shapes.emplace_back(Stroke{Finite(std::move(points)), false, pen});
}

void Surface::Polygon(std::vector<Point> points, const RGBColor& fill) {
    if (points.size() >= 3) m_shapes.emplace_back(FilledPolygon{Finite(std::move(points)), fill});
}

void Surface::Text(double x, double y, std::string_view text, const Font& font, const RGBColor& color,
                   Anchor anchor, double rotation) {
    m_shapes.emplace_back(Label{Finite(x), Finite(y), std::string(text), font, color, anchor,
                                Finite(rotation), font.Width(text), false});
}

void Surface::FittedText(double x, double y, std::string_view text, const Font& font, const RGBColor& color,
                         double width, double rotation) {
    if (Finite(width) <= 0) return;
    m_shapes.emplace_back(Label{Finite(x), Finite(y), std::string(text), font, color, Anchor::START,
                                Finite(rotation), width, true});
}
