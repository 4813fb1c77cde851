// SPDX-License-Identifier: MIT
#include "apps/chartutil/sheet/geometry/NearestCells.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr std::size_t kNone = static_cast<std::size_t>(-1);

// For each cell the row of the nearest mark in its column.
std::vector<std::size_t> NearestInColumns(const Grid& marks) {
    const auto columns = static_cast<std::size_t>(marks.columns), rows = static_cast<std::size_t>(marks.rows);
    std::vector<std::size_t> nearest(columns * rows, kNone);
    for (std::size_t row = 0; row < rows; ++row)
        for (std::size_t column = 0; column < columns; ++column) {
            const std::size_t cell = row * columns + column;
            if (marks.values[cell] > 0)
                nearest[cell] = row;
            else if (row > 0)
                nearest[cell] = nearest[cell - columns];
        }
    for (std::size_t row = rows - 1; row-- > 0;)
        for (std::size_t column = 0; column < columns; ++column) {
            const std::size_t cell = row * columns + column, above = nearest[cell + columns];
            if (above != kNone && above > row &&
                (nearest[cell] == kNone || above - row < row - nearest[cell]))
                nearest[cell] = above;
        }
    return nearest;
}

} // namespace

std::vector<std::size_t> NearestCells(const Grid& marks) {
    const auto columns = static_cast<std::size_t>(marks.columns), rows = static_cast<std::size_t>(marks.rows);
    const std::vector<std::size_t> inColumn = NearestInColumns(marks);
    if (std::ranges::all_of(inColumn, [](std::size_t row) { return row == kNone; })) return {};
    std::vector<std::size_t> nearest(columns * rows);
    const double wide = marks.CellWidth() * marks.CellWidth(), high = marks.CellHeight() * marks.CellHeight();
    std::vector<std::size_t> lowest; // columns whose parabola is the lowest somewhere, from the left
    std::vector<double> from;        // and where that begins
    for (std::size_t row = 0; row < rows; ++row) {
        lowest.clear();
        from.clear();
        const auto foot = [&](std::size_t column) {
            const double away =
                static_cast<double>(inColumn[row * columns + column]) - static_cast<double>(row);
            const double x = static_cast<double>(column);
            return high * away * away + wide * x * x;
        };
        for (std::size_t column = 0; column < columns; ++column) {
            if (inColumn[row * columns + column] == kNone) continue;
            double begin = -std::numeric_limits<double>::infinity();
            while (!lowest.empty()) {
                begin = (foot(column) - foot(lowest.back())) /
                        (2 * wide * static_cast<double>(column - lowest.back()));
                if (begin > from.back()) break;
                lowest.pop_back();
                from.pop_back();
                begin = -std::numeric_limits<double>::infinity();
            }
            lowest.push_back(column);
            from.push_back(begin);
        }
        std::size_t at = 0;
        for (std::size_t column = 0; column < columns; ++column) {
            while (at + 1 < from.size() && from[at + 1] < static_cast<double>(column)) ++at;
            nearest[row * columns + column] = inColumn[row * columns + lowest[at]] * columns + lowest[at];
        }
    }
    return nearest;
}

Grid Distances(const Grid& marks) {
    Grid distances{marks.box, marks.columns, marks.rows};
    distances.values.assign(marks.values.size(), std::numeric_limits<float>::infinity());
    const std::vector<std::size_t> nearest = NearestCells(marks);
    const auto columns = static_cast<std::size_t>(marks.columns);
    for (std::size_t cell = 0; cell < nearest.size(); ++cell) {
        const auto steps = [](std::size_t a, std::size_t b) {
            return static_cast<double>(a > b ? a - b : b - a);
        };
        distances.values[cell] = static_cast<float>(
            std::hypot(steps(cell % columns, nearest[cell] % columns) * marks.CellWidth(),
                       steps(cell / columns, nearest[cell] / columns) * marks.CellHeight()));
    }
    return distances;
}
