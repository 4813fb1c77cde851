#pragma once

namespace CLI {
class App;
}

/// Adds "--force" to a command that writes files: it then replaces those of another kind as well.
void AddForce(CLI::App& command, bool& isForced);
