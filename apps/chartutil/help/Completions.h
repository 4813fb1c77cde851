// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace CLI {
class App;
} // namespace CLI

/// Scripts by which a shell completes the program's commands, options, values with a closed set, files and
/// folders. They know all of `program`, whose commands have to be there, and never run it.
std::string BashCompletion(const CLI::App& program);
std::string ZshCompletion(const CLI::App& program);
std::string FishCompletion(const CLI::App& program);
