// SPDX-License-Identifier: MIT
#include "apps/chartutil/sheet/layers/LineOnPaper.h"

#include <algorithm>
#include <cmath>

LineOnPaper::LineOnPaper(std::vector<Surface::Point> points)
    : m_points(std::move(points)), m_ways(m_points.size()) {
    for (std::size_t i = 1; i < m_points.size(); ++i)
        m_ways[i] =
            m_ways[i - 1] + std::hypot(m_points[i].x - m_points[i - 1].x, m_points[i].y - m_points[i - 1].y);
}

bool LineOnPaper::IsClosed() const {
    return m_points.front().x == m_points.back().x && m_points.front().y == m_points.back().y;
}

Surface::Point LineOnPaper::At(double way) const {
    const auto next = std::ranges::lower_bound(m_ways, way) - m_ways.begin();
    if (next == 0) return m_points.front();
    if (next == std::ssize(m_ways)) return m_points.back();
    const auto i = static_cast<std::size_t>(next);
    const double share = (way - m_ways[i - 1]) / (m_ways[i] - m_ways[i - 1]);
    return {m_points[i - 1].x + (m_points[i].x - m_points[i - 1].x) * share,
            m_points[i - 1].y + (m_points[i].y - m_points[i - 1].y) * share};
}

std::vector<Surface::Point> LineOnPaper::Part(double from, double to) const {
    const auto first = std::ranges::upper_bound(m_ways, from) - m_ways.begin(),
               last = std::ranges::lower_bound(m_ways, to) - m_ways.begin();
    std::vector<Surface::Point> part = {At(from)};
    if (first < last) part.insert(part.end(), m_points.begin() + first, m_points.begin() + last);
    part.push_back(At(to));
    return part;
}

std::optional<std::pair<double, double>> PartWithin(const Surface::Point& from, const Surface::Point& to,
                                                    const Occupied::Box& box) {
    double enters = 0, leaves = 1;
    const auto cut = [&](double start, double step, double low, double high) {
        if (step == 0) {
            if (start < low || start > high) leaves = -1;
            return;
        }
        const double first = (low - start) / step, second = (high - start) / step;
        enters = std::max(enters, std::min(first, second));
        leaves = std::min(leaves, std::max(first, second));
    };
    cut(from.x, to.x - from.x, box.left, box.right);
    cut(from.y, to.y - from.y, box.top, box.bottom);
    if (enters >= leaves) return std::nullopt;
    return std::pair(enters, leaves);
}

std::vector<Gap> GapsFor(const LineOnPaper& line, const Occupied& occupied) {
    std::vector<Gap> gaps;
    const std::vector<Surface::Point>& points = line.Points();
    for (std::size_t i = 1; i < points.size(); ++i) {
        const Surface::Point &a = points[i - 1], &b = points[i];
        const Occupied::Box reach = {std::min(a.x, b.x), std::min(a.y, b.y), std::max(a.x, b.x),
                                     std::max(a.y, b.y)};
        for (const Occupied::Box& box : occupied.Touching(reach)) {
            const double way = line.Ways()[i - 1], length = line.Ways()[i] - way;
            if (const auto part = PartWithin(a, b, box))
                gaps.push_back({way + part->first * length, way + part->second * length});
        }
    }
    return gaps;
}

void DrawBroken(const LineOnPaper& line, std::vector<Gap> gaps, const Surface::Pen& pen, Surface& surface) {
    constexpr double kShortest = 0.8;
    std::ranges::sort(gaps, {}, &Gap::from);
    double from = 0;
    const auto draw = [&](double to) {
        const bool isBetweenGaps = from > 0 && to < line.Length();
        if (to - from > (isBetweenGaps ? kShortest : 0)) surface.Polyline(line.Part(from, to), pen);
    };
    for (const Gap& gap : gaps) {
        draw(gap.from);
        from = std::max(from, gap.to);
    }
    draw(line.Length());
}
