// SPDX-License-Identifier: MIT
#pragma once

#include "apps/chartutil/drawing/Surface.h"

/// The 256 colours of the DXF palette with their numbers, ordered by hue and lightness.
Surface PalettePicture();
