// SPDX-License-Identifier: MIT
#include "apps/chartutil/sheet/layers/Shading.h"

#include "tests/chartutil/gdal/SheetSamples.h"

#include <cmath>
#include <gmock/gmock.h>
#include <limits>

namespace {

SunIlluminationInfo Sun(double azimuth, double elevation, double contrast = 1) {
    SunIlluminationInfo sun;
    sun.Enable(true);
    sun.Azimuth(azimuth);
    sun.Elevation(elevation);
    sun.Contrast(contrast);
    return sun;
}

// Depths that grow by so much a unit to the east and to the north.
Grid Slope(double toEast, double toNorth) {
    Grid grid{{}, 9, 7};
    grid.box.Update(0, 0);
    grid.box.Update(18, 21); // cells of 2 by 3
    for (int row = 0; row < grid.rows; ++row)
        for (int column = 0; column < grid.columns; ++column)
            grid.values.push_back(static_cast<float>(100 + toEast * 2 * column + toNorth * 3 * row));
    return grid;
}

// The angle between two directions in space, made without slopes.
double CosineBetween(const double (&a)[3], const double (&b)[3]) {
    double product = 0, squareA = 0, squareB = 0;
    for (int i = 0; i < 3; ++i) {
        product += a[i] * b[i];
        squareA += a[i] * a[i];
        squareB += b[i] * b[i];
    }
    return product / std::sqrt(squareA * squareB);
}

} // namespace

TEST(Shading, IsTheCosineBetweenTheSunAndTheSlopesNormal) {
    for (const double azimuth : {0.0, 45.0, 290.0})
        for (const double elevation : {10.0, 45.0, 90.0})
            for (const double east : {-0.02, 0.0, 0.05})
                for (const double north : {-0.03, 0.0, 0.01}) {
                    SCOPED_TRACE(::testing::Message()
                                 << azimuth << ' ' << elevation << ' ' << east << ' ' << north);
                    constexpr double kExaggeration = 20, kDegree = 3.14159265358979323846 / 180;
                    const double sun[3] = {std::sin(azimuth * kDegree) * std::cos(elevation * kDegree),
                                           std::cos(azimuth * kDegree) * std::cos(elevation * kDegree),
                                           std::sin(elevation * kDegree)};
                    // Two directions on the bottom, (1, 0, -east) and (0, 1, -north), have this cross
                    // product.
                    const double normal[3] = {kExaggeration * east, kExaggeration * north, 1};
                    const double level[3] = {0, 0, 1};
                    const double expected =
                        std::max(CosineBetween(sun, normal), 0.0) - CosineBetween(sun, level);
                    const Grid light = Light(Slope(east, north), Sun(azimuth, elevation), kExaggeration);
                    EXPECT_NEAR(expected, light.At(4, 3), 1e-4);
                    EXPECT_NEAR(
                        0.5 * expected,
                        Light(Slope(east, north), Sun(azimuth, elevation, 0.5), kExaggeration).At(4, 3),
                        1e-4);
                }
}

TEST(Shading, LevelGroundIsNeitherLighterNorDarker) {
    for (const float value : Light(Slope(0, 0), Sun(290, 30), 40).values) EXPECT_EQ(0.0F, value);
}

TEST(Shading, WeighsTheEightCellsAboutOne) {
    // Only the corners to the east differ, each with half the weight of the cell between them.
    for (const auto& [row, weight] : {std::pair(0, 1.0), std::pair(1, 2.0), std::pair(2, 1.0)}) {
        Grid grid{{}, 3, 3};
        grid.box.Update(0, 0);
        grid.box.Update(3, 3);
        grid.values.assign(9, 0);
        grid.values[static_cast<std::size_t>(row) * 3 + 2] = 0.001F;
        const double fall = 0.001 * weight / 8; // to the east, deeper
        EXPECT_NEAR(std::cos(3.14159265358979323846 / 4) * fall, Light(grid, Sun(90, 45), 1).At(1, 1), 1e-7)
            << row;
    }
}

TEST(Shading, IsNoMoreThanWholeForAnyNumbers) {
    constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
    for (const double contrast : {1e300, -1e300, kNaN})
        for (const double exaggeration : {1.0, 1e300, kNaN})
            for (const float value : Light(Slope(1, 2), Sun(290, 30, contrast), exaggeration).values)
                EXPECT_LE(std::fabs(value), 1.0F);
}

TEST(Shading, LiesOverTheMapWhereTheSunShines) {
    Project project = PlainProject();
    const Chart dark(project, Survey(500, Waves));
    EXPECT_TRUE(Shading(dark.project, dark.frame, dark.scene).png.empty());
    project.sun = Sun(315, 35);
    const Chart lit(project, Survey(500, Waves));
    const Surface::Image image = Shading(lit.project, lit.frame, lit.scene);
    EXPECT_EQ("\x89PNG", image.png.substr(0, 4));
    EXPECT_EQ(lit.frame.Left(), image.x);
    EXPECT_EQ(lit.frame.Top(), image.y);
    EXPECT_EQ(lit.frame.Width(), image.width);
    EXPECT_EQ(lit.frame.Height(), image.height);
}
