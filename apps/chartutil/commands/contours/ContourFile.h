#pragma once

#include "UtilityDLL/contours/ContourDefinitionList.h"
#include "apps/chartutil/terminal/UserText.h"

/// The contours of a file, at least one. Ends the command when there is none, and says why.
ContourDefinitionList OpenContours(const UserText& file);
