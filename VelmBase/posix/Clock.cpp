// SPDX-License-Identifier: MIT
#include "VelmBase/Clock.h"

#include <ctime>

std::uint32_t MillisecondCount() {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<std::uint32_t>(now.tv_sec) * 1000u + static_cast<std::uint32_t>(now.tv_nsec / 1000000);
}
