// SPDX-License-Identifier: MIT
#include "apps/chartutil/Program.h"
#include "apps/chartutil/terminal/Console.h"
#include "apps/chartutil/work/Interrupt.h"

int main(int argc, char** argv) {
    PrepareConsole();
    const ExitCode code = RunProgram(Utf8Arguments(argc, argv));
    EndIfInterrupted();
    return static_cast<int>(code);
}
