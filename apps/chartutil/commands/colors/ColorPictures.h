#pragma once

#include "UtilityDLL/colors/DXFColorTable.h"
#include "apps/chartutil/drawing/Picture.h"

#include <string>

/// The 256 colours of the DXF palette with their numbers, hue by hue.
Picture PalettePicture();

/// The bands of a colour table, the lowest value at the bottom; with `dxf` also the DXF colour nearest to
/// each.
Picture TablePicture(const DXFColorTable& table, const std::string& title, bool dxf);
