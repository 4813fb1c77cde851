#pragma once

#include <chrono>
#include <cstdint>
#include <nlohmann/json_fwd.hpp>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

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

/// The program's arguments as UTF-8, whatever the platform hands over; the program's own name is left out.
std::vector<std::string> Utf8Arguments(int argc, char** argv);

/// Makes standard output and error take UTF-8 and leave line ends alone.
void PrepareConsole();

bool OutputIsTerminal();
bool ErrorIsTerminal();

/// `text` in a colour of the terminal (an SGR code such as "32"); as it is when the output is no terminal.
std::string Colored(std::string_view text, const char* sgr);

/// `text` (UTF-8) with its control characters but line breaks and tabs spelt as \xNN.
std::string WithoutControls(std::string_view text);

/// `text` (UTF-8) as it can be shown: on a terminal without controls, so that no file
/// can steer the terminal; elsewhere as it is.
std::string Printable(std::string_view text);

/// Prints a line to standard error: a note or a warning on what the output is made from.
void PrintNote(std::string_view text);

/// Prints the error to standard error.
void PrintError(const CommandError& error);

/// Prints a JSON document to standard output.
void PrintJson(const nlohmann::ordered_json& document);

/// A bar on standard error while it is a terminal and the work takes long enough to be waited for.
class ProgressBar {
public:
    ProgressBar(std::string_view label, std::uint64_t total);
    ~ProgressBar();
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;

    void Show(std::uint64_t done);

private:
    std::string m_label;
    std::uint64_t m_total;
    std::chrono::steady_clock::time_point m_next;
    bool m_shown = false;
};
