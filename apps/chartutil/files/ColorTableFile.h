#pragma once

#include "UtilityDLL/colors/DXFColorTable.h"

#include <string>

/// Reads a colour table. What is odd in it goes to standard error; `complete` says whether all of it could be
/// read. Ends the command when the file cannot be read or holds no table.
DXFColorTable OpenColorTable(const std::string& path, bool& complete);
