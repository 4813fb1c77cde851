// SPDX-License-Identifier: MIT
#include "apps/chartutil/commands/AddCommand.h"
#include "apps/chartutil/commands/Commands.h"
#include "apps/chartutil/commands/help/ManualPages.h"
#include "apps/chartutil/commands/help/Topics.h"
#include "apps/chartutil/files/Files.h"
#include "apps/chartutil/help/Completions.h"
#include "apps/chartutil/help/HelpFormatter.h"
#include "apps/chartutil/help/OptionText.h"
#include "apps/chartutil/help/Prose.h"
#include "apps/chartutil/terminal/Console.h"
#include "apps/chartutil/terminal/Errors.h"
#include "apps/chartutil/terminal/Suggestion.h"
#include "apps/chartutil/terminal/ValueNames.h"

#include <charconv>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iostream>

namespace {

struct Options {
    const CLI::App* program = nullptr;
    std::string subject, command;
    std::optional<UserText> folder;
};

std::vector<std::string> NamesOf(const std::vector<const CLI::App*>& commands) {
    std::vector<std::string> names;
    names.reserve(commands.size());
    for (const CLI::App* const command : commands) names.push_back(command->get_name());
    return names;
}

// All that can be explained without a further word.
std::vector<std::string> Subjects(const CLI::App& program) {
    std::vector<std::string> subjects = NamesOf(CommandsOf(program));
    for (const Topic& topic : Topics()) subjects.emplace_back(topic.name);
    return subjects;
}

const CLI::App* Find(const CLI::App& group, const std::string& name) {
    for (const CLI::App* const command : CommandsOf(group))
        if (command->get_name() == name) return command;
    return nullptr;
}

[[noreturn]] void ThrowUnknown(const std::string& what, const std::string& word,
                               const std::vector<std::string>& names) {
    const std::string meant = DidYouMean(word, names, '"', '"');
    throw CommandError(ExitCode::WRONG_USE, what + (meant.empty() ? "; 'chartutil help' lists all" : meant));
}

std::string Explanation(const Options& options) {
    if (options.subject.empty()) return HelpOf(*options.program);
    const CLI::App* command = Find(*options.program, options.subject);
    const Topic* const topic = FindTopic(options.subject);
    if (!command && !topic)
        ThrowUnknown("there is no command or topic \"" + options.subject + '"', options.subject,
                     Subjects(*options.program));
    if (!options.command.empty()) {
        const std::vector<const CLI::App*> parts =
            command ? CommandsOf(*command) : std::vector<const CLI::App*>();
        const CLI::App* const part = command ? Find(*command, options.command) : nullptr;
        if (!part)
            ThrowUnknown("there is no command \"" + options.command + "\" in '" + options.subject + '\'',
                         options.command, NamesOf(parts));
        command = part;
    }
    return command ? HelpOf(*command) : ProseText(ReadProse(topic->text()));
}

// The day that the build of a package is told to use for all that has a date; empty without one, since the
// same program has to write the same pages on any day.
std::string DateOfPages() {
    const char* const variable = std::getenv("SOURCE_DATE_EPOCH");
    const std::string_view text = variable ? variable : "";
    long long seconds = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), seconds);
    constexpr long long kLast = 253'402'300'799; // of the year 9999
    if (error != std::errc() || end != text.data() + text.size() || seconds < 0 || seconds > kLast) return {};
    const std::chrono::year_month_day day(
        std::chrono::floor<std::chrono::days>(std::chrono::sys_seconds(std::chrono::seconds(seconds))));
    char date[32];
    std::snprintf(date, sizeof date, "%04d-%02u-%02u", static_cast<int>(day.year()),
                  static_cast<unsigned int>(day.month()), static_cast<unsigned int>(day.day()));
    return date;
}

void Install(const CLI::App& program, const UserText& folder) {
    std::vector<NamedText> files = ManualPages(program, DateOfPages());
    files.push_back({"bash-completion/completions/chartutil", BashCompletion(program)});
    files.push_back({"zsh/vendor-completions/_chartutil", ZshCompletion(program)});
    files.push_back({"fish/vendor_completions.d/chartutil.fish", FishCompletion(program)});
    for (const NamedText& file : files) {
        const UserText path = folder.Utf8() + '/' + file.path;
        std::error_code ignored; // the file says it too
        std::filesystem::create_directories(NativePath(path).parent_path(), ignored);
        WriteFile(path, file.text);
        PrintDone(path.Utf8());
    }
}

void Run(const Options& options) {
    if (!options.folder)
        std::cout << Explanation(options);
    else if (options.folder->Empty())
        throw CommandError(ExitCode::WRONG_USE, "--install is empty; name a folder");
    else
        Install(*options.program, *options.folder);
}

} // namespace

void AddHelpCommand(CLI::App& program) {
    const auto [command, options] = AddCommand<Options>(
        program, "help", "Explain a command or a topic", Run,
        R"(Without a word it lists all commands and topics. 'chartutil COMMAND --help' explains a command too.

--install is for packages, and for a program that was built by hand: in ~/.local/share the completions of bash and fish are found at once, the manual pages when ~/.local/bin is in PATH, those of zsh when the folder zsh/vendor-completions is in fpath. Files of theirs that are there are replaced.

Examples:
  chartutil help
  chartutil help settings set
  chartutil help exit-codes
  chartutil help --install ~/.local/share)");
    options.program = &program;
    CLI::Option* const subject = command.add_option("SUBJECT", options.subject, "The command or topic")
                                     ->check(OfferedNames(Subjects(program)));
    CLI::Option* const part = command.add_option("COMMAND", options.command, "A command of that command");
    AddOptional(command, "--install", options.folder,
                "Write manual pages and completions for shells into this folder")
        ->type_name(kFolderValue)
        ->excludes(subject)
        ->excludes(part);
}
