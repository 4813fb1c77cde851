// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

/// The parts of a message, as the framework names them.
/// @{
using UINT = unsigned int;
using WPARAM = std::uintptr_t;
using LPARAM = std::intptr_t;
using LRESULT = std::intptr_t;
/// @}
