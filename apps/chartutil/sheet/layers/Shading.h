// SPDX-License-Identifier: MIT
#pragma once

#include "apps/chartutil/drawing/Surface.h"
#include "apps/chartutil/sheet/scene/MapFrame.h"
#include "apps/chartutil/sheet/scene/Scene.h"

/// How much lighter than level ground each cell of the surface is under the sun, from -1 to 1: the cosine of
/// the angle between the light and the slope's normal (Lambert), less the sine of the sun's elevation, times
/// the record's contrast. Slopes are those of the eight cells about it (B. K. P. Horn, Hill Shading and the
/// Reflectance Map, Proc. IEEE 69, 1981), of heights that are `exaggeration` times as high as they are, for
/// the bottom of a bay is nearly level. What faces away from the sun is dark.
Grid Light(const Grid& depths, const SunIlluminationInfo& sun, double exaggeration);

/// That as a picture of white and black that let the map shine through; without a file where the record does
/// not enable it.
Surface::Image Shading(const Project& project, const MapFrame& frame, const Scene& scene);
