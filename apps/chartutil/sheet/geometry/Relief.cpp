// SPDX-License-Identifier: MIT
#include "apps/chartutil/sheet/geometry/Relief.h"

#include "apps/chartutil/sheet/geometry/NearestCells.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <optional>

namespace {

Grid Filled(const Grid& shape, float value) {
    Grid grid{shape.box, shape.columns, shape.rows};
    grid.values.assign(static_cast<std::size_t>(shape.columns) * static_cast<std::size_t>(shape.rows), value);
    return grid;
}

bool IsNumber(const Sounding& sounding) {
    return std::isfinite(sounding.place.X()) && std::isfinite(sounding.place.Y()) &&
           std::isfinite(static_cast<float>(sounding.depth));
}

// The cell that a place lies in, as its place among the values.
std::optional<std::size_t> CellAt(const Grid& grid, const WorldPoint& place) {
    const double column = std::floor((place.X() - grid.box.MinX()) / grid.CellWidth());
    const double row = std::floor((place.Y() - grid.box.MinY()) / grid.CellHeight());
    if (!(column >= 0 && column < grid.columns && row >= 0 && row < grid.rows)) return std::nullopt;
    return static_cast<std::size_t>(row) * static_cast<std::size_t>(grid.columns) +
           static_cast<std::size_t>(column);
}

// Places in cells, from the centre of the first one.
struct CellPoint {
    double x, y, depth;
};

void FillTriangle(const std::array<CellPoint, 3>& corners, Grid& grid, std::vector<bool>& isKnown) {
    const auto& [a, b, c] = corners;
    const double area = (b.x - a.x) * (c.y - a.y) - (c.x - a.x) * (b.y - a.y);
    if (area == 0) return;
    const auto first = [](double low) { return static_cast<int>(std::max(std::ceil(low), 0.0)); };
    const auto last = [](double high, int count) {
        return static_cast<int>(std::min(std::floor(high), count - 1.0));
    };
    const int lowest = first(std::min({a.y, b.y, c.y})), highest = last(std::max({a.y, b.y, c.y}), grid.rows);
    for (int row = lowest; row <= highest; ++row) {
        // Where the row enters and leaves the triangle.
        double from = std::numeric_limits<double>::infinity(), to = -from;
        const auto reach = [&](double x) {
            from = std::min(from, x);
            to = std::max(to, x);
        };
        for (const auto& [p, q] : {std::pair(&a, &b), std::pair(&b, &c), std::pair(&c, &a)}) {
            if (std::min(p->y, q->y) > row || std::max(p->y, q->y) < row) continue;
            reach(p->y == q->y ? p->x : p->x + (q->x - p->x) * (row - p->y) / (q->y - p->y));
            if (p->y == q->y) reach(q->x);
        }
        if (!(from <= to)) continue;
        const int right = last(to, grid.columns);
        for (int column = first(from); column <= right; ++column) {
            const double ofB = ((column - a.x) * (c.y - a.y) - (c.x - a.x) * (row - a.y)) / area;
            const double ofC = ((b.x - a.x) * (row - a.y) - (column - a.x) * (b.y - a.y)) / area;
            const std::size_t cell = static_cast<std::size_t>(row) * static_cast<std::size_t>(grid.columns) +
                                     static_cast<std::size_t>(column);
            grid.values[cell] =
                static_cast<float>(a.depth + (b.depth - a.depth) * ofB + (c.depth - a.depth) * ofC);
            isKnown[cell] = true;
        }
    }
}

// A running mean of `half` to either side along the rows, and then along the columns.
void RunningMeans(Grid& grid, int half) {
    const int columns = grid.columns, rows = grid.rows;
    const double weight = 1.0 / (2 * half + 1);
    const auto at = [&](int column, int row) -> float& {
        return grid.values[static_cast<std::size_t>(row) * static_cast<std::size_t>(columns) +
                           static_cast<std::size_t>(column)];
    };
    std::vector<float> before(static_cast<std::size_t>(columns));
    for (int row = 0; row < rows; ++row) {
        std::copy_n(&at(0, row), columns, before.begin());
        const auto value = [&](int column) {
            return static_cast<double>(before[static_cast<std::size_t>(std::clamp(column, 0, columns - 1))]);
        };
        double sum = 0;
        for (int column = -half; column <= half; ++column) sum += value(column);
        for (int column = 0; column < columns; ++column) {
            at(column, row) = static_cast<float>(sum * weight);
            sum += value(column + half + 1) - value(column - half);
        }
    }
    const std::vector<float> old = grid.values;
    const auto line = [&](int row) {
        return old.data() +
               static_cast<std::size_t>(std::clamp(row, 0, rows - 1)) * static_cast<std::size_t>(columns);
    };
    std::vector<double> sums(static_cast<std::size_t>(columns));
    for (int row = -half; row <= half; ++row)
        for (std::size_t i = 0; i < sums.size(); ++i) sums[i] += static_cast<double>(line(row)[i]);
    for (int row = 0; row < rows; ++row) {
        const float *const enters = line(row + half + 1), *const leaves = line(row - half);
        for (std::size_t i = 0; i < sums.size(); ++i) {
            at(static_cast<int>(i), row) = static_cast<float>(sums[i] * weight);
            sums[i] += static_cast<double>(enters[i]) - static_cast<double>(leaves[i]);
        }
    }
}

} // namespace

std::vector<Sounding> ThinToShoalest(const std::vector<Sounding>& soundings, const Grid& shape,
                                     std::size_t most) {
    std::vector<Sounding> kept;
    const double halfWidth = shape.box.ExtentX() / 2, halfHeight = shape.box.ExtentY() / 2;
    WorldBox reach = shape.box;
    reach.Update(reach.MinX() - halfWidth, reach.MinY() - halfHeight);
    reach.Update(shape.box.MaxX() + halfWidth, shape.box.MaxY() + halfHeight);
    for (int size = 1;; size *= 2) {
        const Grid squares{reach, (2 * shape.columns + size - 1) / size, (2 * shape.rows + size - 1) / size};
        constexpr std::size_t kNone = static_cast<std::size_t>(-1);
        std::vector<std::size_t> shoalest(
            static_cast<std::size_t>(squares.columns) * static_cast<std::size_t>(squares.rows), kNone);
        std::size_t count = 0;
        for (std::size_t i = 0; i < soundings.size(); ++i) {
            if (!IsNumber(soundings[i])) continue;
            const std::optional<std::size_t> cell = CellAt(squares, soundings[i].place);
            if (!cell) continue;
            std::size_t& best = shoalest[*cell];
            if (best == kNone) ++count;
            if (best == kNone || soundings[i].depth < soundings[best].depth) best = i;
        }
        if (count > most && squares.columns * squares.rows > 1) continue;
        kept.reserve(count);
        for (const std::size_t i : shoalest)
            if (i != kNone) kept.push_back(soundings[i]);
        return kept;
    }
}

Grid SurfaceThrough(const std::vector<Sounding>& soundings, const Grid& shape,
                    const GeometryModule& geometry) {
    if (soundings.empty()) return {shape.box, shape.columns, shape.rows};
    Grid grid = Filled(shape, 0);
    std::vector<CellPoint> points;
    std::vector<WorldPoint> places;
    for (const Sounding& sounding : soundings) {
        points.push_back({(sounding.place.X() - shape.box.MinX()) / shape.CellWidth() - 0.5,
                          (sounding.place.Y() - shape.box.MinY()) / shape.CellHeight() - 0.5,
                          sounding.depth});
        places.emplace_back(points.back().x, points.back().y);
    }
    std::vector<bool> isKnown(grid.values.size());
    for (const auto& [a, b, c] : geometry.Triangulate(places))
        FillTriangle({points[a], points[b], points[c]}, grid, isKnown);
    // A cell with a sounding but no triangle at its centre; of several the shoalest.
    std::vector<bool> isSounding(grid.values.size());
    for (const Sounding& sounding : soundings) {
        const std::optional<std::size_t> cell = CellAt(shape, sounding.place);
        if (!cell || isKnown[*cell]) continue;
        float& value = grid.values[*cell];
        const auto depth = static_cast<float>(sounding.depth);
        value = isSounding[*cell] ? std::min(value, depth) : depth;
        isSounding[*cell] = true;
    }
    Grid marks = Filled(shape, 0);
    for (std::size_t i = 0; i < marks.values.size(); ++i)
        marks.values[i] = isKnown[i] || isSounding[i] ? 1.0F : 0.0F;
    const std::vector<std::size_t> nearest = NearestCells(marks);
    if (nearest.empty()) return {shape.box, shape.columns, shape.rows};
    for (std::size_t i = 0; i < nearest.size(); ++i) grid.values[i] = grid.values[nearest[i]];
    return grid;
}

void Blur(Grid& grid, double deviation) {
    // The variance of a mean of n values is (n * n - 1) / 12.
    const int half = static_cast<int>(std::lround((std::sqrt(4 * deviation * deviation + 1) - 1) / 2));
    if (half <= 0 || grid.values.empty()) return;
    for (int i = 0; i < 3; ++i) RunningMeans(grid, std::min(half, std::max(grid.columns, grid.rows)));
}

void SmoothShoalBiased(Grid& depths, double deviation) {
    const std::vector<float> exact = depths.values;
    Blur(depths, deviation);
    for (std::size_t i = 0; i < exact.size(); ++i) depths.values[i] = std::min(depths.values[i], exact[i]);
    Blur(depths, deviation);
}

Grid Coverage(const std::vector<Sounding>& soundings, const Grid& shape, double reach) {
    Grid marks = Filled(shape, 0);
    for (const Sounding& sounding : soundings)
        if (const std::optional<std::size_t> cell = CellAt(shape, sounding.place)) marks.values[*cell] = 1;
    // Twice as far and more is reached from each sounding, and what is not is widened again: that closes
    // gaps.
    const auto wide = static_cast<float>(reach * 3.5);
    const Grid fromSoundings = Distances(marks);
    for (std::size_t i = 0; i < marks.values.size(); ++i)
        marks.values[i] = fromSoundings.values[i] > wide ? 1.0F : 0.0F;
    Grid coverage = Distances(marks);
    const auto near = static_cast<float>(reach);
    for (float& value : coverage.values) value = std::min(value, 3 * wide) - (wide - near);
    Blur(coverage, reach / shape.CellWidth());
    // That rounds tips off, but not so far that a sounding stands beyond the limit.
    for (std::size_t i = 0; i < coverage.values.size(); ++i)
        coverage.values[i] = std::max(coverage.values[i], 0.8F * near - fromSoundings.values[i]);
    Blur(coverage, 0.2 * reach / shape.CellWidth());
    return coverage;
}
