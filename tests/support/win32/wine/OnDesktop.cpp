// SPDX-License-Identifier: MIT
// OnDesktop PROGRAM [ARGUMENT...]: runs it on a desktop of its own, and ends as it does.
//
// Under Wine a desktop stays on the display of the program that made it, and is nowhere when that had none.
// The system's libraries look for theirs before a program's first line, so it has to be there before. This
// one loads none that does.

#include <windows.h>

namespace {

// The command line behind its first word.
wchar_t* Arguments() {
    wchar_t* rest = GetCommandLineW();
    bool isQuoted = false;
    for (; *rest != L'\0' && (isQuoted || *rest != L' '); ++rest)
        if (*rest == L'"') isQuoted = !isQuoted;
    while (*rest == L' ') ++rest;
    return rest;
}

} // namespace

int main() {
    wchar_t name[32] = L"";
    wsprintfW(name, L"Program%u", GetCurrentProcessId());
    if (!CreateDesktopW(name, nullptr, nullptr, 0, GENERIC_ALL, nullptr)) return 126;
    STARTUPINFOW start = {};
    start.cb = sizeof start;
    start.lpDesktop = name;
    PROCESS_INFORMATION process = {};
    if (!CreateProcessW(nullptr, Arguments(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &start, &process))
        return 127;
    WaitForSingleObject(process.hProcess, INFINITE);
    DWORD result = 1;
    GetExitCodeProcess(process.hProcess, &result);
    return static_cast<int>(result);
}
