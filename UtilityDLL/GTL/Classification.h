// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace GTL::CLS {

/// Where a point or a box lies relative to a shape. The boundary counts as inside.
enum CLASSIFICATION : std::int32_t {
    INVALID = 0,  ///< one of the boxes is not valid
    INSIDE = 1,   ///< the point, or the whole other box, lies within
    OUTSIDE = 2,  ///< the point lies outside, or the boxes are apart
    OVERLAP = 10, ///< the other box is neither inside nor apart
};

} // namespace GTL::CLS
