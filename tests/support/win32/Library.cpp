// SPDX-License-Identifier: MIT
#include "tests/support/Library.h"

#include <windows.h>

void* LoadSharedLibrary(const char* path) { return LoadLibraryA(path); }

void* FunctionOf(void* library, const char* name) {
    return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(library), name));
}

void UnloadSharedLibrary(void* library) { FreeLibrary(static_cast<HMODULE>(library)); }

bool IsLoaded(const char* path) { return GetModuleHandleA(path) != nullptr; }
