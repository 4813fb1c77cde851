#include "apps/chartutil/Commands.h"

#include <CLI/CLI.hpp>

void AddCrcCommand(CLI::App& program) { program.add_subcommand("crc", "CRC-guarded files"); }
