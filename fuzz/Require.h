// SPDX-License-Identifier: MIT
#pragma once

#include <cstdio>
#include <cstdlib>

/// Ends the run with a message when a promise is broken. The line is the caller's.
inline void Require(bool holds, const char* promise = "", int line = __builtin_LINE()) {
    if (holds) return;
    std::fprintf(stderr, "broken in line %d: %s\n", line, promise);
    std::abort();
}
