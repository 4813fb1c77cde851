// SPDX-License-Identifier: MIT
#pragma once

#include <CLI/CLI.hpp>

#include <string>

/// What "--help" prints: the command's purpose, its arguments, commands and options in two columns, and its
/// footer, in lines of at most kHelpWidth characters whatever the terminal.
class HelpFormatter : public CLI::FormatterBase {
public:
    std::string make_help(const CLI::App* command, std::string before,
                          CLI::AppFormatMode mode) const override;
};

/// The same for a command of any depth.
std::string HelpOf(const CLI::App& command);
