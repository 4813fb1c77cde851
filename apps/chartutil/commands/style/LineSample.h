// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/presentation/DXFInfo.h"
#include "UtilityDLL/presentation/LineInfo.h"
#include "apps/chartutil/drawing/Surface.h"

/// A sheet with lines in that style, as wide as on paper, and what the style consists of. Lines wider than 5
/// millimetres are drawn that wide.
Surface LineSample(const LineInfo& line);
Surface LineSample(const DXFInfo& line);
