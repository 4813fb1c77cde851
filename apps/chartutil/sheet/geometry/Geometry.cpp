// SPDX-License-Identifier: MIT
#include "apps/chartutil/sheet/geometry/Geometry.h"

#include <algorithm>
#include <cmath>

double Grid::ValueAt(const WorldPoint& place) const {
    const double x = std::clamp((place.X() - box.MinX()) / CellWidth() - 0.5, 0.0, columns - 1.0);
    const double y = std::clamp((place.Y() - box.MinY()) / CellHeight() - 0.5, 0.0, rows - 1.0);
    const int column = std::min(static_cast<int>(x), std::max(columns - 2, 0));
    const int row = std::min(static_cast<int>(y), std::max(rows - 2, 0));
    const int right = std::min(column + 1, columns - 1), above = std::min(row + 1, rows - 1);
    const auto between = [](double a, double b, double share) { return a + (b - a) * share; };
    return between(between(At(column, row), At(right, row), x - column),
                   between(At(column, above), At(right, above), x - column), y - row);
}
