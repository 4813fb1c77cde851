// SPDX-License-Identifier: MIT
#pragma once

#include "apps/chartutil/terminal/Errors.h"

#include <string>
#include <vector>

namespace CLI {
class App;
} // namespace CLI

/// Gives `program`, which is named and otherwise empty, all that these arguments need of the command line:
/// the one command that they name, else all commands.
void Describe(CLI::App& program, const std::vector<std::string>& arguments);

/// Does what the UTF-8 arguments ask for (the program's own name left out), with results on std::cout and
/// errors on std::cerr. Nothing is thrown.
ExitCode RunProgram(std::vector<std::string> arguments);
