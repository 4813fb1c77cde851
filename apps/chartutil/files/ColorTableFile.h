// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/colors/DXFColorTable.h"
#include "apps/chartutil/terminal/UserText.h"

/// Reads a colour table. What is odd in it goes to standard error; `complete` says whether all of it could be
/// read. Ends the command when the file cannot be read or holds no table.
DXFColorTable OpenColorTable(const UserText& path, bool& complete);

/// Ends the command (ExitCode::CHECK_FAILED) when not all of the table could be read.
void RequireComplete(bool complete, const UserText& path);

/// Saves a colour table in a file of its own. Ends the command when it cannot be written.
void SaveColorTable(const ColorTable& table, const UserText& path);
