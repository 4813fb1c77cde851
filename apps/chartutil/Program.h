// SPDX-License-Identifier: MIT
#pragma once

#include "apps/chartutil/terminal/Errors.h"

#include <string>
#include <vector>

/// Does what the UTF-8 arguments ask for (the program's own name left out), with results on std::cout and
/// errors on std::cerr. Nothing is thrown.
ExitCode RunProgram(std::vector<std::string> arguments);
