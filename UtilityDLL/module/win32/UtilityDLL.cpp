// SPDX-License-Identifier: MIT
#include "UtilityDLL/module/private/Attach.h"

#include <windows.h>

// The C++ runtime calls it when the module's own objects are made, and, at the end, before they are
// destroyed.
extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID /*reserved*/) {
    if (reason == DLL_PROCESS_ATTACH) return AttachModule(instance) ? TRUE : FALSE;
    if (reason == DLL_PROCESS_DETACH) DetachModule();
    return TRUE;
}
