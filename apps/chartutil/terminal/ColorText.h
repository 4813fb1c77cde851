#pragma once

#include "UtilityDLL/colors/RGBColor.h"

#include <string>

/// A colour that a user writes as "#RRGGBB", or as R,G,B with numbers from 0 to 255. Another text ends the
/// command (ExitCode::WRONG_USE).
RGBColor RequireColor(const std::string& text);

/// Black or white, whichever is easier to read on that colour.
RGBColor ReadableOn(const RGBColor& background);

/// "#RRGGBB"
std::string HexText(const RGBColor& color);

/// `text` on that colour, where the terminal shows colours; else as it is.
std::string OnColor(const std::string& text, const RGBColor& color);
