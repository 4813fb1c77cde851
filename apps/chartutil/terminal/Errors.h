// SPDX-License-Identifier: MIT
#pragma once

#include <stdexcept>
#include <string>
#include <system_error>

/// What the program tells its caller; every command's help says so too.
enum class ExitCode : int {
    SUCCESS = 0,
    CHECK_FAILED = 1,
    WRONG_USE = 2,
    IO_ERROR = 3,
};

/// Ends a command: the text goes to standard error, the code to the caller. Say what, where and what to do.
class CommandError : public std::runtime_error {
public:
    CommandError(ExitCode code, const std::string& text) : std::runtime_error(text), m_code(code) {}
    ExitCode Code() const { return m_code; }

private:
    ExitCode m_code;
};

/// Ends a command whose output is already complete, without a further text.
struct CommandExit {
    ExitCode code;
};

/// Ends the command: the file cannot be written, for that reason, and one that is there is as it was. Says
/// what to do about it.
[[noreturn]] void ThrowNotWritten(const std::string& path, const std::error_code& reason);
