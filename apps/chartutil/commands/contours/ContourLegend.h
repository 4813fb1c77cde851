#pragma once

#include "UtilityDLL/contours/ContourDefinitionList.h"
#include "apps/chartutil/drawing/Picture.h"

#include <string>

/// A line for each contour, as it looks on the chart. Widths are drawn six pixels to a unit.
Picture ContourLegend(const ContourDefinitionList& list, const std::string& title);
