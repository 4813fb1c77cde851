#include "apps/chartutil/Commands.h"

#include <CLI/CLI.hpp>

void AddSettingsCommand(CLI::App& program) { program.add_subcommand("settings", "Settings files"); }
