// SPDX-License-Identifier: MIT
#include "apps/chartutil/sheet/layers/DrawnContours.h"

#include <algorithm>
#include <cmath>

namespace {

// The point as the rectangle's sides have it that is turned clockwise about the centre.
Surface::Point Turned(const Surface::Point& point, const Surface::Point& centre, double degrees) {
    const double angle = degrees * M_PI / 180, x = point.x - centre.x, y = point.y - centre.y;
    return {x * std::cos(angle) + y * std::sin(angle), y * std::cos(angle) - x * std::sin(angle)};
}

} // namespace

DrawnContours::DrawnContours(const ContourDefinitionList& levels, const MapFrame& frame, const Scene& scene) {
    std::vector<Occupied::Box> boxes;
    for (const ContourLine& contour : scene.contours) {
        const int position = levels.Find(contour.level);
        if (position < 0 || contour.points.size() < 2) continue;
        std::vector<Surface::Point> points;
        points.reserve(contour.points.size());
        for (const WorldPoint& point : contour.points) points.push_back(frame(point));
        for (std::size_t i = 1; i < points.size(); ++i) {
            const Surface::Point &a = points[i - 1], &b = points[i];
            boxes.push_back({std::min(a.x, b.x), std::min(a.y, b.y), std::max(a.x, b.x), std::max(a.y, b.y)});
            m_segments.push_back({m_contours.size(), i});
        }
        m_contours.push_back({LineOnPaper(std::move(points)), levels[position]});
    }
    m_boxes = Occupied(boxes);
}

bool DrawnContours::Cross(const Occupied::Box& box) const {
    return m_boxes.HasTouching(box, [&](std::size_t number) {
        const auto& [contour, end] = m_segments[number];
        const std::vector<Surface::Point>& points = m_contours[contour].line.Points();
        return PartWithin(points[end - 1], points[end], box).has_value();
    });
}

bool DrawnContours::OthersCross(std::size_t contour, const Surface::Point& centre, double width,
                                double height, double degrees) const {
    const double half = std::hypot(width, height) / 2;
    const Occupied::Box reach = {centre.x - half, centre.y - half, centre.x + half, centre.y + half};
    const Occupied::Box box = {-width / 2, -height / 2, width / 2, height / 2};
    return m_boxes.HasTouching(reach, [&](std::size_t number) {
        const auto& [other, end] = m_segments[number];
        if (other == contour) return false;
        const std::vector<Surface::Point>& points = m_contours[other].line.Points();
        return PartWithin(Turned(points[end - 1], centre, degrees), Turned(points[end], centre, degrees), box)
            .has_value();
    });
}
