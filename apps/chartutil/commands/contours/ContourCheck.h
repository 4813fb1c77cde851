#pragma once

#include "UtilityDLL/settings/IniFile.h"

#include <string>
#include <vector>

/// What a contour definition file has: how many contours are read, and what is odd, each with its section.
struct ContourFindings {
    int numContours = 0;
    std::vector<std::string> findings;
};
ContourFindings CheckContours(const IniFile& file);
