// SPDX-License-Identifier: MIT
#pragma once

#include "VelmBase/Export.h"

#include <cstdint>

/// Milliseconds of a clock that never steps back, from an arbitrary start; wraps after 49.7 days.
VELMBASE_API std::uint32_t MillisecondCount();
