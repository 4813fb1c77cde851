// SPDX-License-Identifier: MIT
#include "apps/chartutil/sheet/geometry/Relief.h"

#include "tests/chartutil/gdal/SheetSamples.h"

#include <cmath>
#include <gmock/gmock.h>
#include <limits>
#include <numeric>

using ::testing::Each;
using ::testing::FloatNear;

namespace {

Grid Shape(double x = 0, double y = 0, double cell = 1) {
    Grid shape{{}, 60, 40};
    shape.box.Update(x, y);
    shape.box.Update(x + 60 * cell, y + 40 * cell);
    return shape;
}

Grid Through(const std::vector<Sounding>& soundings, const Grid& shape) {
    return SurfaceThrough(soundings, shape, LoadGeometryModule());
}

} // namespace

TEST(Relief, OfEachSquareTheShoalestSoundingIsKept) {
    const std::vector<Sounding> kept = ThinToShoalest(
        {{{0.5, 0.5}, 4}, {{0.2, 0.9}, 3}, {{0.9, 0.1}, 5}, {{1.5, 0.5}, 9}, {{1.5, 0.5}, 9}}, Shape(), 1000);
    ASSERT_EQ(2u, kept.size());
    EXPECT_EQ(3, kept[0].depth);
    EXPECT_EQ(WorldPoint(0.2, 0.9), kept[0].place);
    EXPECT_EQ(9, kept[1].depth);
}

TEST(Relief, SoundingsThatAreNoNumbersOrFarAwayAreLeftOut) {
    constexpr double kNaN = std::numeric_limits<double>::quiet_NaN(),
                     kInfinity = std::numeric_limits<double>::infinity();
    for (const Sounding& sounding :
         {Sounding{{kNaN, 1}, 1}, Sounding{{1, kNaN}, 1}, Sounding{{1, 1}, kNaN}, Sounding{{kInfinity, 1}, 1},
          Sounding{{1, 1}, kInfinity}, Sounding{{1, 1}, 1e300}, Sounding{{-31, 1}, 1}, Sounding{{1, 61}, 1},
          Sounding{{1e300, 1e300}, 1}})
        EXPECT_TRUE(ThinToShoalest({sounding}, Shape(), 1000).empty())
            << sounding.place.X() << ' ' << sounding.depth;
    EXPECT_EQ(1u, ThinToShoalest({{{-29, 1}, 1}}, Shape(), 1000).size());
}

TEST(Relief, SquaresGrowUntilThereAreNoMoreSoundingsThanWanted) {
    std::vector<Sounding> soundings;
    for (int x = 0; x < 60; ++x)
        for (int y = 0; y < 40; ++y) soundings.push_back({{x + 0.5, y + 0.5}, 100.0 - x - y});
    for (const std::size_t most : {2400u, 2399u, 600u, 100u, 1u, 0u}) {
        const std::vector<Sounding> kept = ThinToShoalest(soundings, Shape(), most);
        EXPECT_LE(kept.size(), std::max<std::size_t>(most, 1));
        EXPECT_GE(4 * kept.size() + 40, std::min<std::size_t>(most, 2400)) << most;
        EXPECT_EQ(2, std::ranges::min(kept, {}, &Sounding::depth).depth) << "the shoalest of all stays";
    }
}

TEST(Relief, ASlopeIsReproducedBetweenItsSoundings) {
    struct Row {
        double x, y, cell;
    };
    for (const Row& row : {Row{0, 0, 1}, Row{1e7, -1e7, 1}, Row{1e7, 1e7, 0.001}}) {
        const Grid shape = Shape(row.x, row.y, row.cell);
        const auto depth = [&](double x, double y) {
            return 5 + (x - row.x) / row.cell / 10 - (y - row.y) / row.cell / 20;
        };
        std::vector<Sounding> soundings;
        for (const Sounding& sounding : Survey(300, [](double, double) { return 0; })) {
            const double x = row.x + sounding.place.X() * row.cell / 3,
                         y = row.y + sounding.place.Y() * row.cell / 3;
            soundings.push_back({{x, y}, depth(x, y)});
        }
        for (const double x : {-20.0, 80.0})
            for (const double y : {-15.0, 55.0})
                soundings.push_back({{row.x + x * row.cell, row.y + y * row.cell},
                                     depth(row.x + x * row.cell, row.y + y * row.cell)});
        const Grid grid = Through(soundings, shape);
        for (int column = 0; column < grid.columns; ++column)
            for (int r = 0; r < grid.rows; ++r)
                ASSERT_NEAR(5 + (column + 0.5) / 10 - (r + 0.5) / 20, grid.At(column, r), 1e-4)
                    << column << ' ' << r;
    }
}

TEST(Relief, WhereThereAreNoTrianglesTheNearestDepthGoesOn) {
    EXPECT_TRUE(Through({}, Shape()).values.empty());
    EXPECT_THAT(Through({{{30, 20}, 7}}, Shape()).values, Each(7.0F));
    EXPECT_THAT(Through({{{30, 20}, 7}, {{30, 20}, 7}, {{30, 20}, 7}, {{30, 20}, 7}}, Shape()).values,
                Each(7.0F));
    const Grid two = Through({{{10, 20}, 3}, {{50, 20}, 9}}, Shape());
    EXPECT_EQ(3.0F, two.At(0, 0));
    EXPECT_EQ(3.0F, two.At(29, 39));
    EXPECT_EQ(9.0F, two.At(31, 0));
    const Grid line = Through({{{10, 10}, 1}, {{20, 20}, 2}, {{30, 30}, 3}}, Shape());
    EXPECT_EQ(1.0F, line.At(0, 0));
    EXPECT_EQ(3.0F, line.At(59, 39));
}

TEST(Relief, AFlatBottomStaysFlat) {
    Grid grid = Through(Survey(500, [](double, double) { return 12; }), Shape());
    SmoothShoalBiased(grid, 1.6);
    EXPECT_THAT(grid.values, Each(FloatNear(12, 1e-5F)));
}

TEST(Relief, ABlurSpreadsAsFarAsItsDeviationSays) {
    for (const double deviation : {1.5, 3.0, 6.0}) {
        Grid grid{{}, 101, 101};
        grid.values.assign(101 * 101, 0);
        grid.values[50 * 101 + 50] = 1;
        Blur(grid, deviation);
        double sum = 0, variance = 0;
        for (int row = 0; row < 101; ++row)
            for (int column = 0; column < 101; ++column) {
                const double value = grid.At(column, row);
                sum += value;
                variance += value * (column - 50) * (column - 50);
            }
        EXPECT_NEAR(1, sum, 1e-5);
        EXPECT_NEAR(deviation, std::sqrt(variance), 0.5);
    }
}

TEST(Relief, ABlurOfNothingIsNothing) {
    Grid grid{{}, 3, 1, {1, 5, 2}};
    Blur(grid, 0);
    EXPECT_THAT(grid.values, ::testing::ElementsAre(1, 5, 2));
    Blur(grid, 1e9); // wider than the grid
    EXPECT_THAT(grid.values, Each(::testing::AllOf(::testing::Ge(1), ::testing::Le(5))));
}

TEST(Relief, SmoothingKeepsShoalsRatherThanHollows) {
    Grid grid{{}, 41, 41};
    grid.values.assign(41 * 41, 10);
    grid.values[20 * 41 + 10] = 2;  // a shoal
    grid.values[20 * 41 + 30] = 18; // a hollow as deep as that is high
    SmoothShoalBiased(grid, 1.5);
    EXPECT_GT(10 - grid.At(10, 20), 2 * (grid.At(30, 20) - 10));
}

TEST(Relief, EachSoundingIsKnownAndWhatIsFarFromAllIsNot) {
    const Grid shape = Shape(1e7, 0, 1);
    const std::vector<std::vector<WorldPoint>> surveys = {
        {{1e7 + 30, 20}},                                              // alone
        {{1e7 + 5, 20}, {1e7 + 55, 20}},                               // too far from each other
        {{1e7 + 10, 5}, {1e7 + 16, 5}, {1e7 + 22, 5}, {1e7 + 22, 12}}, // a spit
        {{1e7 + 0.5, 0.5}, {1e7 + 59.5, 39.5}},                        // in the corners
    };
    for (const std::vector<WorldPoint>& places : surveys) {
        std::vector<Sounding> soundings;
        for (const WorldPoint& place : places) soundings.push_back({place, 1});
        const double reach = 4;
        const Grid coverage = Coverage(soundings, shape, reach);
        for (const WorldPoint& place : places)
            EXPECT_GT(coverage.ValueAt(place), 0) << place.X() << ' ' << place.Y();
        for (int column = 0; column < 60; ++column)
            for (int row = 0; row < 40; ++row) {
                double nearest = 1e9;
                for (const WorldPoint& place : places)
                    nearest =
                        std::min(nearest, std::hypot(1e7 + column + 0.5 - place.X(), row + 0.5 - place.Y()));
                if (nearest > 3.5 * reach) {
                    EXPECT_LT(coverage.At(column, row), 0) << column << ' ' << row;
                }
            }
    }
}

TEST(Relief, WhatLiesBetweenSoundingsIsKnown) {
    std::vector<Sounding> soundings;
    for (double x = 5; x < 60; x += 10)
        for (double y = 5; y < 40; y += 10) soundings.push_back({{x, y}, 1});
    const Grid coverage = Coverage(soundings, Shape(), 4); // 10 apart, further than twice the reach
    for (int column = 6; column < 54; ++column)
        for (int row = 6; row < 34; ++row) ASSERT_GT(coverage.At(column, row), 0) << column << ' ' << row;
}
