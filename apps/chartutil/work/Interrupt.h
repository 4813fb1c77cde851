// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

/// Listens, while it exists, to what asks the program to end: Ctrl-C, SIGTERM and SIGHUP, on Windows Ctrl-C,
/// Ctrl-Break and the closing of the console. The first of them is noted, so that work can end in good order;
/// after it a Ctrl-C ends the program at once, as it does without this class. What the program was started to
/// ignore stays ignored. There is one at a time.
class Interrupt {
public:
    Interrupt();
    ~Interrupt();
    Interrupt(const Interrupt&) = delete;
    Interrupt& operator=(const Interrupt&) = delete;

    /// Whether the program was asked to end since the last object of this class was made. For every thread.
    static bool IsRequested();

    /// Asks as Ctrl-C does. For every thread.
    static void Request();
};

/// Reads up to `count` bytes of standard input; `got` is 0 at its end, and when the program is asked to end
/// meanwhile or was before. False when they cannot be read.
[[nodiscard]] bool ReadStandardInput(void* buffer, std::size_t count, std::size_t& got);

/// Ends the program the way in which interrupted programs of the system end, if it was asked to: by the
/// signal itself, so that a script ends too; on Windows with the exit code 0xC000013A.
void EndIfInterrupted();
