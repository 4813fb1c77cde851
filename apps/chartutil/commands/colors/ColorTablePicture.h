// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/colors/DXFColorTable.h"
#include "apps/chartutil/drawing/Surface.h"

#include <string>

/// The bands of a colour table, the lowest at the bottom, with the values at which they begin; with `dxf` the
/// table's DXF colours, which have to be built, and their numbers beside them.
Surface ColorTablePicture(const DXFColorTable& table, const std::string& title, bool dxf);
