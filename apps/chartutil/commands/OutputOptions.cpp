#include "apps/chartutil/commands/OutputOptions.h"

#include <CLI/CLI.hpp>

void AddForce(CLI::App& command, bool& isForced) {
    command.add_flag("--force", isForced, "Replace a file of another kind too");
}
