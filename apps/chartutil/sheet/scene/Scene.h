// SPDX-License-Identifier: MIT
#pragma once

#include "apps/chartutil/sheet/geometry/Geometry.h"
#include "apps/chartutil/sheet/project/Project.h"
#include "apps/chartutil/sheet/scene/MapFrame.h"

#include <vector>

/// What is to be seen on the map, in units of the world.
struct Scene {
    std::vector<Sounding> soundings;
    std::unique_ptr<CoordinateSystem> system; ///< null when the project has none
    Grid depths;
    Grid coverage; ///< above 0 where the surface is known: how far it is to where it is not

    /// Where the surface is at or below each value of the colour table, that many as it has entries.
    std::vector<std::vector<Area>> areas;
    std::vector<Area> unknown;                  ///< where no sounding is near
    std::vector<std::vector<WorldPoint>> limit; ///< lines between that and what is known
    std::vector<ContourLine> contours;
};

/// Computes it from the project's soundings.
Scene MakeScene(const Project& project, const MapFrame& frame, std::vector<Sounding> soundings);
