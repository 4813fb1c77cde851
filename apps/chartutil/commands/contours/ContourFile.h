// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/contours/ContourDefinitionList.h"
#include "apps/chartutil/terminal/UserText.h"

#include <string>
#include <vector>

/// The contours of a file, or "-" for standard input; what is odd in it goes to `remarks`. Ends the command
/// when it is no file of settings.
ContourDefinitionList ReadContours(const UserText& file, std::vector<std::wstring>* remarks = nullptr);

/// The same, at least one. Ends the command when there is none, and says why.
ContourDefinitionList OpenContours(const UserText& file);
