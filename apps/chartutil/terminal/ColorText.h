#pragma once

#include "UtilityDLL/colors/DXFColorTable.h"
#include "UtilityDLL/colors/RGBColor.h"

#include <string>

/// A colour that a user writes as "#RRGGBB", or as R,G,B with numbers from 0 to 255. Another text ends the
/// command (ExitCode::WRONG_USE).
RGBColor RequireColor(const std::string& text);

/// `text` on that colour, where the terminal shows colours; else as it is.
std::string OnColor(const std::string& text, const RGBColor& color);

/// Reads a colour table. What is odd in it goes to standard error; `complete` says whether all of it could be
/// read. Ends the command when the file cannot be read or holds no table.
DXFColorTable OpenColorTable(const std::string& path, bool& complete);
