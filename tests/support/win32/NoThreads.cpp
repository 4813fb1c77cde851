// SPDX-License-Identifier: MIT
#include "tests/support/NoThreads.h"

#include "tests/support/win32/Import.h"

#include <windows.h>

namespace {

HANDLE WINAPI CreateNoThread(SECURITY_ATTRIBUTES*, SIZE_T, LPTHREAD_START_ROUTINE, void*, DWORD, DWORD*) {
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return nullptr;
}

ULONG_PTR usualFunction = 0;

} // namespace

// The framework's calls come here instead.
NoThreads::NoThreads() {
    usualFunction = ReplaceImport("CreateThread", reinterpret_cast<ULONG_PTR>(&CreateNoThread));
}

NoThreads::~NoThreads() { ReplaceImport("CreateThread", usualFunction); }
