#pragma once

#include <compare>
#include <string>

/// Where a face lies.
struct FaceFile {
    std::string path;       ///< as the system has it
    int index = 0;          ///< in a collection; above 16 bits the instance of a variable font, from 1
    std::string variations; ///< of a variable font, as in "wght=700,wdth=75"

    auto operator<=>(const FaceFile&) const = default;
};
