// SPDX-License-Identifier: MIT
#pragma once

#include "Framework/device/Gdi.h"

#include <freetype/freetype.h>

/// The measures of a face in font units, as Windows takes them from the font's tables. The cell is that of
/// the OS/2 table, without one or with none in it that of the horizontal header, else the typographic one,
/// else the box of all glyphs, else the em square.
OUTLINETEXTMETRICW MetricsOf(FT_Face face);
