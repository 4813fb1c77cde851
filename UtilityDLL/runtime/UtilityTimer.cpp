// SPDX-License-Identifier: MIT
#include "UtilityDLL/runtime/UtilityTimer.h"

#include "VelmBase/Clock.h"

unsigned long UtilityTimer::Start() noexcept { return m_startTime = MillisecondCount(); }
unsigned long UtilityTimer::Stop() noexcept { return m_stopTime = MillisecondCount(); }
