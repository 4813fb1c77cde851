// SPDX-License-Identifier: MIT
#pragma once

#include "apps/chartutil/drawing/Surface.h"
#include "apps/chartutil/sheet/scene/Occupied.h"

#include <vector>

/// Draws a line where nothing stands: it is broken at all that is in `occupied`.
void DrawClear(const std::vector<Surface::Point>& points, const Surface::Pen& pen, const Occupied& occupied,
               Surface& surface);

/// Whether nothing of the box is outside of the page.
bool IsOn(const Surface& surface, const Occupied::Box& box);
