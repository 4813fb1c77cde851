// SPDX-License-Identifier: MIT
#include "apps/chartutil/terminal/Console.h"

#include "VelmBase/WideString.h"

#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <shellapi.h>

namespace {

// A console that shows colours: older ones print the codes as they are.
bool IsTerminal(DWORD stream) {
    DWORD mode = 0;
    return GetConsoleMode(GetStdHandle(stream), &mode) && (mode & ENABLE_VIRTUAL_TERMINAL_PROCESSING);
}

void EnableColors(DWORD stream) {
    const HANDLE console = GetStdHandle(stream);
    DWORD mode = 0;
    if (GetConsoleMode(console, &mode)) SetConsoleMode(console, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
}

} // namespace

std::vector<std::string> Utf8Arguments(int, char**) {
    // The narrow arguments have lost what the code page does not hold.
    int count = 0;
    wchar_t** const wide = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<std::string> arguments;
    for (int i = 1; i < count; ++i) arguments.push_back(ToUtf8(wide[i]));
    LocalFree(wide);
    return arguments;
}

void PrepareConsole() {
    for (std::FILE* const stream : {stdin, stdout, stderr}) _setmode(_fileno(stream), _O_BINARY);
    // The code page belongs to the console, which outlives the program.
    static const UINT before = GetConsoleOutputCP();
    SetConsoleOutputCP(CP_UTF8);
    std::atexit([] { SetConsoleOutputCP(before); });
    EnableColors(STD_OUTPUT_HANDLE);
    EnableColors(STD_ERROR_HANDLE);
}

bool OutputIsTerminal() { return IsTerminal(STD_OUTPUT_HANDLE); }
bool ErrorIsTerminal() { return IsTerminal(STD_ERROR_HANDLE); }
