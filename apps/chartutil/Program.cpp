// SPDX-License-Identifier: MIT
#include "apps/chartutil/Program.h"

#include "UtilityDLL/module/UtilityDLL.h"
#include "VelmBase/WideString.h"
#include "apps/chartutil/Version.h"
#include "apps/chartutil/commands/Commands.h"
#include "apps/chartutil/commands/help/Topics.h"
#include "apps/chartutil/help/HelpFormatter.h"
#include "apps/chartutil/terminal/Console.h"
#include "apps/chartutil/terminal/Errors.h"
#include "apps/chartutil/terminal/Suggestion.h"
#include "apps/chartutil/work/LongWork.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <exception>
#include <iostream>
#include <iterator>
#include <memory>
#include <sstream>
#include <string_view>

namespace {

struct Command {
    std::string_view name;
    void (*add)(CLI::App& program);
    const char* group; // in the list of commands
};
constexpr char kCharts[] = "Charts", kFiles[] = "Settings files", kColors[] = "Contours and colours",
               kTexts[] = "Texts", kNumbers[] = "Numbers and bytes", kHelp[] = "Help";
constexpr Command kCommands[] = {
    {"init", AddInitCommand, kCharts},         {"sheet", AddSheetCommand, kCharts},
    {"check", AddCheckCommand, kCharts},       {"settings", AddSettingsCommand, kFiles},
    {"style", AddStyleCommand, kFiles},        {"keywords", AddKeywordsCommand, kFiles},
    {"contours", AddContoursCommand, kColors}, {"edit", AddEditCommand, kColors},
    {"colors", AddColorsCommand, kColors},     {"text", AddTextCommand, kTexts},
    {"fonts", AddFontsCommand, kTexts},        {"transform", AddTransformCommand, kNumbers},
    {"units", AddUnitsCommand, kNumbers},      {"crc", AddCrcCommand, kNumbers},
    {"help", AddHelpCommand, kHelp}, // explains those before it
};

constexpr char kAbout[] =
    R"(Survey charts from soundings, and the settings, colours and texts behind them

A chart is drawn from a project: a folder with soundings and settings, which 'chartutil init' makes to suit your own
file. The other commands show, check and change the files that charts and the programs of the suite share.

Example of a first chart, on Linux:
  chartutil init mybay --soundings soundings.csv   # make a project
  chartutil sheet mybay -o mybay.pdf               # draw its chart
  chartutil check mybay                            # what is in it?

'chartutil help COMMAND' explains a command and shows examples, as COMMAND --help does. --quiet and --no-color may
stand anywhere on the line.)";

// The end of the program's help.
std::string TopicList() {
    std::string list = "Topics, explained by 'chartutil help TOPIC':\n";
    for (const Topic& topic : Topics()) list += std::string("  ") + topic.name + " :: " + topic.about + '\n';
    return list;
}

bool IsOption(const std::string& argument) { return argument.starts_with('-'); }

// The command that the arguments name is made alone, since making all takes longer than most of them do. Help
// is about all.
void AddCommands(CLI::App& program, const std::vector<std::string>& arguments) {
    const auto first = std::ranges::find_if_not(arguments, IsOption);
    const auto isNamed = [&](const Command& command) {
        return first != arguments.end() && command.name == *first;
    };
    const Command* const named = std::ranges::find_if(kCommands, isNamed);
    for (const Command& command : kCommands) {
        if (named != std::end(kCommands) && named->add != AddHelpCommand && !isNamed(command)) continue;
        command.add(program);
        program.get_subcommand(std::string(command.name))->group(command.group);
    }
}

// Options of the program itself, which may stand anywhere among those of its commands.
void AddRestraint(CLI::App& program) {
    const auto add = [&](const char* name, bool Restraint::*field, bool value, const char* what) {
        const auto set = [field, value] {
            Restraint restraint = CurrentRestraint();
            restraint.*field = value;
            SetRestraint(restraint);
        };
        program.add_flag_callback(name, set, what);
    };
    add("--quiet", &Restraint::isQuiet, true, "Print errors and results, and nothing else");
    add("--no-color", &Restraint::hasColors, false, "Print no colours, as with NO_COLOR or TERM=dumb");
    program.fallthrough();
}

// What to say where a command of `program` is to be named and another word stands, or nothing; empty
// elsewhere.
std::string UnknownCommand(const CLI::App& program) {
    const CLI::App* group = &program;
    while (!group->get_subcommands().empty()) group = group->get_subcommands().front();
    std::vector<std::string> names;
    for (const CLI::App* const command : group->get_subcommands({})) names.push_back(command->get_name());
    if (names.empty()) return {};
    const std::string place = group == &program ? "" : " in '" + group->get_display_name() + "'";
    const std::vector<std::string> left = program.remaining(true);
    if (left.empty())
        return "Name a command" + place + ": " + CLI::detail::join(names, ", ") +
               "\nRun with --help for more information.";
    const auto word = std::ranges::find_if_not(left, IsOption);
    if (word == left.end()) return {};
    return "There is no command \"" + *word + '"' + place + DidYouMean(*word, names, '"', '"') +
           "\nRun with --help for more information.";
}

// Prints what is wrong with the arguments, or the help if they ask for it.
ExitCode ExplainUse(const CLI::App& program, const CLI::ParseError& error) {
    std::ostringstream message; // with arguments, which a script may have taken from anywhere
    const bool isHelp = program.exit(error, std::cout, message) == 0;
    if (isHelp) return ExitCode::SUCCESS;
    const std::string unknown = UnknownCommand(program);
    const std::string text = unknown.empty() ? message.str() : unknown;
    PrintError(std::string_view(text).substr(0, text.find_last_not_of('\n') + 1));
    return ExitCode::WRONG_USE;
}

// A caller that reads the output must learn that it is not all there.
ExitCode Finished(ExitCode code) {
    std::cout.flush();
    if (std::cout) return code;
    std::cerr << "chartutil: standard output cannot be written\n";
    return ExitCode::IO_ERROR;
}

} // namespace

void Describe(CLI::App& program, const std::vector<std::string>& arguments) {
    program.description(kAbout);
    program.footer(&TopicList);
    program.formatter(std::make_shared<HelpFormatter>());
    program.set_help_flag("-h,--help", "Explain the command, with examples");
    program.set_version_flag("--version", VersionLines, "Show the versions of the program and its libraries");
    program.require_subcommand(1);
    program.allow_windows_style_options(false); // "/data/a.ini" is a path on every platform
    AddRestraint(program);
    AddCommands(program, arguments);
}

ExitCode RunProgram(std::vector<std::string> arguments) {
    if (const ErrorString started = UtilityDLLStartUp(); !started) {
        if (arguments == std::vector<std::string>{"--version"}) std::cout << VersionLines() << '\n';
        PrintError("chartutil: " + ToUtf8(started.Text()));
        return ExitCode::IO_ERROR;
    }
    CLI::App program("", "chartutil");
    SetRestraint({});
    Describe(program, arguments);

    try {
        std::reverse(arguments.begin(), arguments.end()); // CLI11 takes them from the back
        program.parse(std::move(arguments));
        return Finished(ExitCode::SUCCESS);
    } catch (const CLI::ParseError& error) {
        return Finished(ExplainUse(program, error));
    } catch (const Interrupted& interrupted) {
        PrintError("chartutil: " + interrupted.text);
        return Finished(ExitCode::IO_ERROR);
    } catch (const CommandExit& exit) {
        return Finished(exit.code);
    } catch (const CommandError& error) {
        PrintError(error);
        return Finished(error.Code());
    } catch (const std::bad_alloc&) {
        std::cerr << "chartutil: not enough memory for this input\n";
        return ExitCode::IO_ERROR;
    } catch (const std::exception& error) {
        PrintError(std::string("chartutil: ") + error.what());
        return ExitCode::IO_ERROR;
    }
}
