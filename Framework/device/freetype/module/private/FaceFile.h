// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <tuple>

/// Where a face lies.
struct FaceFile {
    std::string path;       ///< as the system has it
    int index = 0;          ///< in a collection; above 16 bits the instance of a variable font, from 1
    std::string variations; ///< of a variable font, as in "wght=700,wdth=75"

    bool operator<(const FaceFile& other) const {
        return std::tie(path, index, variations) < std::tie(other.path, other.index, other.variations);
    }
};
