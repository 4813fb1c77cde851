// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/Export.h"

#include <cstdint>

/// A stopwatch in milliseconds. Times are those of a 32-bit counter of the system that wraps after 49.7 days.
class UTILITYDLL_API UtilityTimer {
public:
    /// Takes the current time as the start, and returns it.
    unsigned long Start() noexcept;

    /// Takes the current time as the stop, and returns it.
    unsigned long Stop() noexcept;

    /// Milliseconds from start to stop, right across one wrap of the counter. Meaningless before Stop().
    constexpr unsigned long Elapse() const noexcept {
        return static_cast<std::uint32_t>(m_stopTime - m_startTime);
    }

    /// Both times 0, as in a new timer.
    constexpr void Reset() noexcept { *this = UtilityTimer(); }

private:
    std::uint32_t m_startTime = 0;
    std::uint32_t m_stopTime = 0;
};
