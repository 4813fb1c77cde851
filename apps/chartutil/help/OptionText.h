// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
} // namespace CLI

/// What help, manual page and completions say of an option or argument of a command.
struct OptionText {
    std::vector<std::string> names;   ///< "-o" and "--output"; of an argument its only name
    std::string value;                ///< what an option takes, such as "FILE"; empty for a flag
    std::string about;                ///< in one line, with its default and what it goes with
    std::string group;                ///< the heading that it stands under
    std::vector<std::string> choices; ///< all values that it knows; empty where these are not counted
    bool takesFile = false;
    bool takesFolder = false;
    bool isArgument = false;
    bool isRequired = false;
    bool isRepeated = false; ///< may be given again; an argument takes all words that follow

    /// How it is written: "-o, --output FILE", "FILE...".
    std::string Term() const;
};

/// Those that users are shown, in their order.
std::vector<OptionText> ArgumentsOf(const CLI::App& command);
std::vector<OptionText> OptionsOf(const CLI::App& command);

/// The commands of a group, in their order; none of a command that has none.
std::vector<const CLI::App*> CommandsOf(const CLI::App& group);

/// "chartutil settings get": the command's name behind those of the groups that it is in.
std::string FullName(const CLI::App& command);

/// How a command is called: "chartutil settings get [OPTIONS] FILE SECTION KEY".
std::string Usage(const CLI::App& command);
