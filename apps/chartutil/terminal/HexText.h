// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/colors/RGBColor.h"

#include <string>

/// "#RRGGBB"
std::string HexText(const RGBColor& color);

/// Black or white, whichever is easier to read on that colour.
RGBColor ReadableOn(const RGBColor& background);
