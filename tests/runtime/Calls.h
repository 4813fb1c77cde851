// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <utility>

/// Who was called with what, in order, a blank behind each: "b5 a5 ".
inline std::string calls;

/// The calls so far, without the last blank; none is left.
inline std::string TakeCalls() {
    std::string taken = std::exchange(calls, {});
    if (!taken.empty()) taken.pop_back();
    return taken;
}
