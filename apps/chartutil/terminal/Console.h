// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <vector>

class CommandError;

/// The program's arguments as UTF-8, whatever the platform hands over; the program's own name is left out.
std::vector<std::string> Utf8Arguments(int argc, char** argv);

/// Makes standard output and error take UTF-8 and leave line ends alone.
void PrepareConsole();

bool OutputIsTerminal();
bool ErrorIsTerminal();

/// `text` (UTF-8) with its control characters but line breaks and tabs spelt out, also those above U+007F and
/// the bytes that a terminal without UTF-8 would take for them. `spelling` says how, in printf's words.
std::string WithoutControls(std::string_view text, const char* spelling = "\\x%02X");

/// `text` (UTF-8) as it can be shown: on a terminal without controls, so that no file can steer the terminal;
/// elsewhere as it is.
std::string Printable(std::string_view text);

/// What is left out of all that is printed from now on; the user decides. Nothing is at first.
struct Restraint {
    bool isQuiet = false;  ///< what PrintNote() and PrintDone() print, and the progress bar
    bool hasColors = true; ///< on a terminal that shows them
};
void SetRestraint(const Restraint& restraint);
const Restraint& CurrentRestraint();

/// Whether a terminal gets colours. Not with TERM=dumb, nor where NO_COLOR is set to anything.
bool ColorsAreWanted();

/// Whether the environment says that the terminal shows lines of text and can do nothing else (TERM=dumb).
bool TerminalIsDumb();

/// Prints a line to standard output that says what was done, in a command whose result is a file.
void PrintDone(std::string_view text);

/// Prints a line to standard error: a note or a warning on what the output is made from.
void PrintNote(std::string_view text);

/// Prints a line to standard error that the user has to see.
void PrintError(std::string_view text);
void PrintError(const CommandError& error);
