// SPDX-License-Identifier: MIT
#pragma once

#include "apps/chartutil/terminal/UserText.h"

#include <iosfwd>
#include <string>
#include <string_view>

/// Whether the name stands for standard input, or for standard output where a file is written.
bool IsStandardStream(const UserText& path);

/// What a file is called in messages: its name, or which of the standard streams it is.
std::string InputName(const UserText& path);
std::string OutputName(const UserText& path);

/// Standard input and output as the files of the command that runs. Each serves one file. While output gets a
/// file, all that the command prints goes to standard error. One object at a time; it gives the streams back.
class StandardStreams {
public:
    StandardStreams();
    ~StandardStreams();
    StandardStreams(const StandardStreams&) = delete;
    StandardStreams& operator=(const StandardStreams&) = delete;

    /// The command is about to read or to write a file there. Ends it (ExitCode::WRONG_USE) when another one
    /// of its files is there already.
    static void TakeInput();
    static void TakeOutput();

    /// Writes to standard output, on a terminal without controls. Ends the command when that fails.
    static void Write(std::string_view bytes);

private:
    static StandardStreams* current;

    std::streambuf* m_output;
    bool m_isInputTaken = false;
    bool m_isOutputTaken = false;
};
