// SPDX-License-Identifier: MIT
#include "apps/chartutil/sheet/layers/Shading.h"

#include "UtilityDLL/text/GDIMapper.h"

#include <algorithm>
#include <cmath>

Grid Light(const Grid& depths, const SunIlluminationInfo& sun, double exaggeration) {
    Grid light{depths.box, depths.columns, depths.rows};
    light.values.reserve(depths.values.size());
    const double azimuth = sun.Azimuth() * M_PI / 180, elevation = sun.Elevation() * M_PI / 180;
    const double east = std::sin(azimuth) * std::cos(elevation),
                 north = std::cos(azimuth) * std::cos(elevation), up = std::sin(elevation);
    const double toEast = exaggeration / (8 * depths.CellWidth()),
                 toNorth = exaggeration / (8 * depths.CellHeight());
    for (int row = 0; row < depths.rows; ++row) {
        for (int column = 0; column < depths.columns; ++column) {
            const auto height = [&](int dx, int dy) {
                return -static_cast<double>(depths.At(std::clamp(column + dx, 0, depths.columns - 1),
                                                      std::clamp(row + dy, 0, depths.rows - 1)));
            };
            const double eastwards = toEast * (height(1, 1) + 2 * height(1, 0) + height(1, -1) -
                                               height(-1, 1) - 2 * height(-1, 0) - height(-1, -1));
            const double northwards = toNorth * (height(1, 1) + 2 * height(0, 1) + height(-1, 1) -
                                                 height(1, -1) - 2 * height(0, -1) - height(-1, -1));
            const double cosine = (up - eastwards * east - northwards * north) /
                                  std::sqrt(1 + eastwards * eastwards + northwards * northwards);
            const double more = (std::max(cosine, 0.0) - up) * sun.Contrast();
            light.values.push_back(std::isfinite(more) ? static_cast<float>(std::clamp(more, -1.0, 1.0))
                                                       : 0.0F);
        }
    }
    return light;
}

Surface::Image Shading(const Project& project, const MapFrame& frame, const Scene& scene) {
    Surface::Image image{frame.Left(), frame.Top(), frame.Width(), frame.Height(), {}};
    if (!project.sun.Enable()) return image;
    constexpr double kPixelsPerMm = 2; // light changes no faster than the surface's cells
    Pixels pixels;
    pixels.columns = std::max(static_cast<int>(std::lround(frame.Width() * kPixelsPerMm)), 1);
    pixels.rows = std::max(static_cast<int>(std::lround(frame.Height() * kPixelsPerMm)), 1);
    pixels.values.reserve(static_cast<std::size_t>(pixels.columns) * static_cast<std::size_t>(pixels.rows) *
                          4);
    GDIMapper mapper;
    mapper.Create(frame.World(), CRect{0, 0, pixels.columns, pixels.rows});
    const Grid light = Light(scene.depths, project.sun, project.exaggeration);
    for (int row = 0; row < pixels.rows; ++row) {
        for (int column = 0; column < pixels.columns; ++column) {
            const WorldPoint place = mapper << CPoint{column, row};
            // Within a millimetre of the limit it fades, so that no pixels are seen there.
            const double fade = std::clamp(scene.coverage.ValueAt(place) / frame.UnitsPerMm(), 0.0, 1.0);
            const double more = fade > 0 ? light.ValueAt(place) * fade : 0;
            constexpr double kMostOpaque = 160;
            const std::uint8_t shade = more > 0 ? 255 : 0;
            pixels.values.insert(pixels.values.end(), 3, shade);
            pixels.values.push_back(static_cast<std::uint8_t>(std::lround(std::fabs(more) * kMostOpaque)));
        }
    }
    image.png = LoadGeometryModule().Png(pixels);
    return image;
}
