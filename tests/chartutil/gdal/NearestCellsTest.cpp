// SPDX-License-Identifier: MIT
#include "apps/chartutil/sheet/geometry/NearestCells.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>

namespace {

Grid Marks(int columns, int rows, double cellWidth, double cellHeight, unsigned oneOf, unsigned seed) {
    Grid marks{{}, columns, rows};
    marks.box.Update(-7, 1e7);
    marks.box.Update(-7 + columns * cellWidth, 1e7 + rows * cellHeight);
    std::mt19937 random(seed);
    for (int i = 0; i < columns * rows; ++i) marks.values.push_back(random() % oneOf == 0 ? 1.0F : 0.0F);
    return marks;
}

double Between(const Grid& grid, std::size_t a, std::size_t b) {
    const auto columns = static_cast<std::size_t>(grid.columns);
    const auto steps = [](std::size_t p, std::size_t q) {
        return static_cast<double>(p) - static_cast<double>(q);
    };
    return std::hypot(steps(a % columns, b % columns) * grid.CellWidth(),
                      steps(a / columns, b / columns) * grid.CellHeight());
}

} // namespace

TEST(NearestCells, AreAsNearAsASearchOfAllFinds) {
    struct Row {
        int columns, rows;
        double width, height;
        unsigned oneOf;
    };
    for (const Row& row : {Row{1, 1, 1, 1, 1}, Row{40, 1, 1, 2, 9}, Row{1, 40, 3, 1, 9}, Row{30, 20, 1, 1, 2},
                           Row{31, 27, 1, 1, 100}, Row{27, 31, 0.5, 2.5, 40}, Row{50, 40, 900, 1, 60}}) {
        for (unsigned seed = 1; seed <= 5; ++seed) {
            SCOPED_TRACE(::testing::Message() << row.columns << " x " << row.rows << ", seed " << seed);
            const Grid marks = Marks(row.columns, row.rows, row.width, row.height, row.oneOf, seed);
            const std::vector<std::size_t> nearest = NearestCells(marks);
            const Grid distances = Distances(marks);
            for (std::size_t cell = 0; cell < marks.values.size(); ++cell) {
                double least = std::numeric_limits<double>::infinity();
                for (std::size_t other = 0; other < marks.values.size(); ++other)
                    if (marks.values[other] > 0) least = std::min(least, Between(marks, cell, other));
                if (std::isinf(least)) {
                    EXPECT_TRUE(nearest.empty());
                    EXPECT_TRUE(std::isinf(distances.values[cell]));
                    continue;
                }
                ASSERT_GT(marks.values[nearest[cell]], 0);
                ASSERT_NEAR(least, Between(marks, cell, nearest[cell]), 1e-6 * least);
                ASSERT_NEAR(least, distances.values[cell], 1e-6 * least);
            }
        }
    }
}

TEST(NearestCells, AreNoneWithoutAMark) {
    const Grid marks = Marks(5, 4, 1, 1, std::numeric_limits<unsigned>::max(), 1);
    EXPECT_TRUE(NearestCells(marks).empty());
    EXPECT_TRUE(std::isinf(Distances(marks).values.front()));
}
