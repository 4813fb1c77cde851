// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/contours/ContourDefinitionList.h"
#include "apps/chartutil/drawing/Surface.h"

#include <string>

/// A line for each contour, as it looks on the chart, with its level and its style.
Surface ContourLegend(const ContourDefinitionList& list, const std::string& title);
