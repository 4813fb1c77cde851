// SPDX-License-Identifier: MIT
#pragma once

#include "apps/chartutil/sheet/geometry/Geometry.h"

#include <cstddef>
#include <vector>

/// The nearest cell of those above 0, for each cell of a grid, as its place in Grid::values; of cells that
/// are equally far, any. Exact, in time that grows with the number of cells alone. Empty where no cell is
/// above 0.
///
/// Columns first, then along each row the lower envelope of the parabolas of distance: P. Felzenszwalb and
/// D. Huttenlocher, Distance Transforms of Sampled Functions, Theory of Computing 8 (2012).
std::vector<std::size_t> NearestCells(const Grid& marks);

/// How far the centre of each cell is from that of the nearest one above 0; infinite where there is none.
Grid Distances(const Grid& marks);
