// SPDX-License-Identifier: MIT
#include "VelmBase/Clock.h"

#include <windows.h>

#include <timeapi.h>

// The multimedia timer: the tick count of the system goes in steps of 16 milliseconds.
std::uint32_t MillisecondCount() { return timeGetTime(); }
