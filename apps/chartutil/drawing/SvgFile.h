// SPDX-License-Identifier: MIT
#pragma once

#include "apps/chartutil/drawing/Surface.h"

#include <string>

/// The page as an SVG file, in millimetres.
std::string SvgFile(const Surface& surface);
