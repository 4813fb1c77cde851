// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/presentation/LineInfo.h"
#include "apps/chartutil/drawing/Surface.h"

/// How a line of that style is drawn on paper, its width in millimetres: none is thinner than 0.05.
Surface::Pen PenOf(const LineInfo& line);
