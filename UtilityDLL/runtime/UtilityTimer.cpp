#include "UtilityDLL/runtime/UtilityTimer.h"

#include "VelmBase/Clock.h"

unsigned long UtilityTimer::Start() { return m_startTime = MillisecondCount(); }
unsigned long UtilityTimer::Stop() { return m_stopTime = MillisecondCount(); }
