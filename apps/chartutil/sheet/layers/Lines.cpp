// SPDX-License-Identifier: MIT
#include "apps/chartutil/sheet/layers/Lines.h"

#include <algorithm>

namespace {

struct Span {
    double from, to; // shares of a segment
};

// Where the segment runs through the box; from 1 to 0 where it does not.
Span Covered(const Surface::Point& a, const Surface::Point& b, const Occupied::Box& box) {
    // What is no more than a line, as a tick, is crossed.
    if (!(box.left < box.right) || !(box.top < box.bottom)) return {1, 0};
    Span span = {0, 1};
    const auto cut = [&](double start, double step, double low, double high) {
        if (step == 0) {
            if (start < low || start > high) span = {1, 0};
            return;
        }
        const double first = (low - start) / step, second = (high - start) / step;
        span.from = std::max(span.from, std::min(first, second));
        span.to = std::min(span.to, std::max(first, second));
    };
    cut(a.x, b.x - a.x, box.left, box.right);
    cut(a.y, b.y - a.y, box.top, box.bottom);
    return span;
}

} // namespace

void DrawClear(const std::vector<Surface::Point>& points, const Surface::Pen& pen, const Occupied& occupied,
               Surface& surface) {
    std::vector<Surface::Point> line;
    const auto close = [&] {
        surface.Polyline(std::move(line), pen);
        line.clear();
    };
    for (std::size_t i = 1; i < points.size(); ++i) {
        const Surface::Point &a = points[i - 1], &b = points[i];
        const auto at = [&](double share) {
            return Surface::Point{a.x + (b.x - a.x) * share, a.y + (b.y - a.y) * share};
        };
        std::vector<Span> covered;
        for (const Occupied::Box& box : occupied.Touching(
                 {std::min(a.x, b.x), std::min(a.y, b.y), std::max(a.x, b.x), std::max(a.y, b.y)})) {
            const Span span = Covered(a, b, box);
            if (span.from < span.to) covered.push_back(span);
        }
        std::ranges::sort(covered, {}, &Span::from);
        const auto add = [&](double from, double to) {
            if (line.empty()) line.push_back(at(from));
            line.push_back(at(to));
        };
        double from = 0;
        for (const Span& span : covered) {
            if (span.from > from) add(from, span.from);
            close();
            from = std::max(from, span.to);
        }
        if (from < 1) add(from, 1);
    }
    close();
}

bool IsOn(const Surface& surface, const Occupied::Box& box) {
    return box.left >= 0 && box.top >= 0 && box.right <= surface.Width() && box.bottom <= surface.Height();
}
