// SPDX-License-Identifier: MIT
#include "apps/chartutil/terminal/Console.h"

#include <unistd.h>

std::vector<std::string> Utf8Arguments(int argc, char** argv) { return {argv + 1, argv + argc}; }

void PrepareConsole() {}

bool OutputIsTerminal() { return isatty(STDOUT_FILENO) == 1; }
bool ErrorIsTerminal() { return isatty(STDERR_FILENO) == 1; }
