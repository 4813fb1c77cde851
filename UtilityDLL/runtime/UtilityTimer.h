#pragma once

#include "UtilityDLL/Export.h"

#include <cstdint>

/// A stopwatch in milliseconds. Times are those of a 32-bit counter of the system that wraps after 49.7 days.
class UTILITYDLL_API UtilityTimer {
public:
    /// Takes the current time as the start, and returns it.
    unsigned long Start();

    /// Takes the current time as the stop, and returns it.
    unsigned long Stop();

    /// Milliseconds from start to stop, right across one wrap of the counter. Without meaning before Stop().
    unsigned long Elapse() const { return static_cast<std::uint32_t>(m_stopTime - m_startTime); }

    /// Both times 0, as in a new timer.
    void Reset() { *this = UtilityTimer(); }

private:
    std::uint32_t m_startTime = 0;
    std::uint32_t m_stopTime = 0;
};
