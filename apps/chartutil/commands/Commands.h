// SPDX-License-Identifier: MIT
#pragma once

namespace CLI {
class App;
}

// Each adds one command with its subcommands and options to the program. What a command does runs as CLI11's
// callback; it ends by returning (success) or by throwing a CommandError or CommandExit.
void AddSettingsCommand(CLI::App& program);
void AddCrcCommand(CLI::App& program);
void AddColorsCommand(CLI::App& program);
void AddStyleCommand(CLI::App& program);
void AddUnitsCommand(CLI::App& program);
void AddTransformCommand(CLI::App& program);
void AddKeywordsCommand(CLI::App& program);
void AddContoursCommand(CLI::App& program);
void AddEditCommand(CLI::App& program);
void AddTextCommand(CLI::App& program);
void AddFontsCommand(CLI::App& program);
void AddSheetCommand(CLI::App& program);
void AddInitCommand(CLI::App& program);
void AddCheckCommand(CLI::App& program);

/// Explains all that the program has by then.
void AddHelpCommand(CLI::App& program);
