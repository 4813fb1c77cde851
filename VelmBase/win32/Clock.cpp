#include "VelmBase/Clock.h"

#include <windows.h>

std::uint32_t MillisecondCount() { return static_cast<std::uint32_t>(GetTickCount64()); }
