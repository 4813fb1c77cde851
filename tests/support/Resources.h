// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

/// What this process has of the system just now.
struct Resources {
    std::size_t threads;
    std::size_t handles; // or open files, where everything is one; give or take a few
    std::size_t heap;    // bytes in use; 0 where a sanitizer, which counts them itself, has replaced the heap
};
Resources ResourcesInUse();
