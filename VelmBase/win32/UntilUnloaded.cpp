// SPDX-License-Identifier: MIT
#include "VelmBase/UntilUnloaded.h"

#include <windows.h>

// What a library's DllMain is told, for those who have none.
bool IsProcessEnding() {
    using Function = BOOLEAN(WINAPI*)();
    // Through void*, since the compiler warns of a cast between kinds of functions.
    const auto isEnding = reinterpret_cast<Function>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "RtlDllShutdownInProgress")));
    return isEnding && isEnding();
}
