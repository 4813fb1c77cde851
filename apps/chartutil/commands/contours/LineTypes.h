// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

/// What the command line calls the types of a contour's line, by their number.
inline const std::vector<std::string> kLineTypes = {"continuous", "dashed", "dotted"};

/// The name of that type; what no name stands for is drawn continuous.
inline const std::string& LineTypeName(int type) {
    return kLineTypes[type >= 0 && type < 3 ? static_cast<std::size_t>(type) : 0];
}
