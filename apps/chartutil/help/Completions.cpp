// SPDX-License-Identifier: MIT
#include "apps/chartutil/help/Completions.h"

#include "apps/chartutil/help/OptionText.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <functional>

namespace {

// Those of the command, and those of the program that may stand behind it too.
std::vector<OptionText> OptionsAt(const CLI::App& command) {
    std::vector<OptionText> options = OptionsOf(command);
    const CLI::App* program = &command;
    while (program->get_parent()) program = program->get_parent();
    if (program == &command) return options;
    for (const OptionText& option : OptionsOf(*program))
        if (option.names != std::vector<std::string>{"--version"} &&
            std::ranges::none_of(options, [&](const OptionText& own) { return own.names == option.names; }))
            options.push_back(option);
    return options;
}

void ForEachCommand(const CLI::App& command, const std::function<void(const CLI::App&)>& handle) {
    handle(command);
    for (const CLI::App* const part : CommandsOf(command)) ForEachCommand(*part, handle);
}

std::string NamesOf(const std::vector<const CLI::App*>& commands) {
    std::vector<std::string> names;
    names.reserve(commands.size());
    for (const CLI::App* const command : commands) names.push_back(command->get_name());
    return CLI::detail::join(names, " ");
}

std::string Choices(const OptionText& option) { return CLI::detail::join(option.choices, " "); }

// What a shell shows beside a name: the first sentence.
std::string InBrief(const std::string& about) {
    return about.substr(0, std::min(about.find(". "), about.find("; ")));
}

bool IsLong(const std::string& name) { return name.starts_with("--"); }

// `text` with a backslash before each of these characters.
std::string Escaped(const std::string& text, std::string_view characters) {
    std::string escaped;
    for (const char c : text) {
        if (characters.find(c) != std::string_view::npos) escaped += '\\';
        escaped += c;
    }
    return escaped;
}

// --- bash ---

// Between single quotes, where nothing has a meaning but the quote.
std::string QuotedForBash(const std::string& text) {
    return '\'' + CLI::detail::find_and_replace(text, "'", "'\\''") + '\'';
}

// A case that says what a value is; nothing for one that the user makes up.
std::string BashValue(const std::string& patterns, const OptionText& option) {
    const std::string begin = "    " + patterns + ") ";
    if (!option.choices.empty())
        return begin + "kind=words words=" + QuotedForBash(Choices(option)) + " ;;\n";
    return begin +
           (option.takesFile     ? "kind=file"
            : option.takesFolder ? "kind=folder"
                                 : "kind=text") +
           " ;;\n";
}

constexpr char kBashWalk[] = R"(
_chartutil() {
    local commands options kind words word option='' command=chartutil number=0 i
    COMPREPLY=()
    _chartutil_command "$command"
    for ((i = 1; i < COMP_CWORD; ++i)); do
        word=${COMP_WORDS[i]}
        if [[ $option ]]; then
            [[ $word == '=' ]] || option='' # its value
        elif [[ $word == -?* ]]; then
            _chartutil_value "$command $word"
            [[ $kind ]] && option=$word
        elif [[ " $commands " == *" $word "* ]]; then
            command+=" $word"
            _chartutil_command "$command"
        else
            ((++number))
        fi
    done
    local current=${COMP_WORDS[COMP_CWORD]}
    if [[ $option ]]; then
        [[ $current == '=' ]] && current=''
        _chartutil_value "$command $option"
    elif [[ $current == -* ]]; then
        kind=words words=$options
    elif [[ $commands && $number == 0 ]]; then
        kind=words words=$commands
    else
        _chartutil_value "$command $number"
    fi
    case $kind in
    words) mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current") ;;
    file) compopt -o default ;; # the shell's own completion of files
    folder) compopt -o dirnames ;;
    esac
}
complete -F _chartutil chartutil
)";

// --- zsh ---

std::string ZshFunction(const CLI::App& command) {
    return '_' + CLI::detail::find_and_replace(CLI::detail::find_and_replace(FullName(command), " ", "_"),
                                               "-", "_");
}

std::string ZshAction(const OptionText& option) {
    if (!option.choices.empty()) return '(' + Choices(option) + ')';
    return option.takesFile ? "_files" : option.takesFolder ? "_files -/" : " ";
}

std::string ZshOption(const OptionText& option) {
    std::string about = '[' + Escaped(InBrief(option.about), "[]\\") + ']';
    if (!option.value.empty()) about += ':' + Escaped(option.value, ":\\") + ':' + ZshAction(option);
    std::vector<std::string> names; // with how the value follows: "-o FILE" or "-oFILE", "--output=FILE" too
    for (const std::string& name : option.names)
        names.push_back(option.value.empty() ? name : name + (IsLong(name) ? "=" : "+"));
    const std::string exclusion = option.isRepeated ? "*" : '(' + CLI::detail::join(option.names, " ") + ')';
    if (names.size() == 1) return QuotedForBash((option.isRepeated ? "*" : "") + names.front() + about);
    return QuotedForBash(exclusion) + '{' + CLI::detail::join(names, ",") + '}' + QuotedForBash(about);
}

std::string ZshFunctionText(const CLI::App& command) {
    const std::vector<const CLI::App*> parts = CommandsOf(command);
    std::string text = '\n' + ZshFunction(command) + "() {\n";
    std::string arguments = " \\\n        ";
    std::vector<std::string> entries;
    for (const OptionText& option : OptionsAt(command)) entries.push_back(ZshOption(option));
    int number = 0;
    for (const OptionText& argument : ArgumentsOf(command)) {
        const std::string place = argument.isRepeated ? "*" : std::to_string(++number);
        entries.push_back(QuotedForBash(place + (argument.isRequired || argument.isRepeated ? ":" : "::") +
                                        argument.names.front() + ':' + ZshAction(argument)));
    }
    if (parts.empty())
        return text + "    _arguments -s -S :" + arguments + CLI::detail::join(entries, arguments) + "\n}\n";
    entries.emplace_back("'1:command:->command'");
    entries.emplace_back("'*::argument:->argument'");
    text += "    local line state commands\n"
            "    _arguments -C :" +
            arguments + CLI::detail::join(entries, arguments) +
            "\n"
            "    case $state in\n"
            "    command)\n"
            "        commands=(";
    for (const CLI::App* const part : parts)
        text += "\n            " +
                QuotedForBash(part->get_name() + ':' + Escaped(part->get_description(), ":\\"));
    text += ")\n"
            "        _describe -t commands command commands\n"
            "        ;;\n"
            "    argument)\n"
            "        case $line[1] in\n";
    for (const CLI::App* const part : parts)
        text += "        " + part->get_name() + ") " + ZshFunction(*part) + " ;;\n";
    return text + "        esac\n"
                  "        ;;\n"
                  "    esac\n"
                  "}\n";
}

// --- fish ---

std::string QuotedForFish(const std::string& text) { return '\'' + Escaped(text, "'\\") + '\''; }

std::string FishValue(const OptionText& option) {
    if (!option.choices.empty()) return " -x -a " + QuotedForFish(Choices(option));
    if (option.takesFile) return " -r -F";
    if (option.takesFolder) return " -x -a '(__fish_complete_directories)'";
    return " -x";
}

std::string FishNames(const OptionText& option) {
    std::string names;
    for (const std::string& name : option.names)
        names += (IsLong(name) ? " -l " : " -s ") + name.substr(IsLong(name) ? 2 : 1);
    return names;
}

// What the words before the cursor are, options left out.
constexpr char kFishCondition[] = R"(
# Whether the words begin with this command; with --only, whether they are no more than it.
function __chartutil_is
    argparse only -- $argv
    set -l words
    for word in (commandline -opc)[2..]
        string match -q -- '-*' $word; or set -a words $word
    end
    set -l count (count $argv)
    set -q _flag_only; and test (count $words) -ne $count; and return 1
    test $count -eq 0; or test "$words[1..$count]" = "$argv"
end

complete -c chartutil -f
)";

std::string FishLines(const CLI::App& command) {
    const std::size_t end = std::min(FullName(command).find(' '), FullName(command).size());
    const std::string words = FullName(command).substr(end); // behind the program's name
    const std::string begin = "complete -c chartutil -n '__chartutil_is" + words + "'";
    const std::string beginOnly = "complete -c chartutil -n '__chartutil_is --only" + words + "'";
    std::string text = "\n";
    for (const CLI::App* const part : CommandsOf(command))
        text +=
            beginOnly + " -a " + part->get_name() + " -d " + QuotedForFish(part->get_description()) + '\n';
    const bool isProgram = !command.get_parent();
    for (const OptionText& option : OptionsOf(command)) {
        const bool isHelp = option.names.back() == "--help";
        if (isHelp && !isProgram) continue; // that of the program holds everywhere
        text += (isProgram && option.names.back() == "--version" ? beginOnly : begin) + FishNames(option) +
                (option.value.empty() ? "" : FishValue(option)) + " -d " +
                QuotedForFish(InBrief(option.about)) + '\n';
    }
    for (const OptionText& argument : ArgumentsOf(command)) {
        if (!argument.choices.empty())
            text += beginOnly + " -a " + QuotedForFish(Choices(argument)) + '\n';
        else if (argument.takesFile)
            text += begin + " -F\n";
        else if (argument.takesFolder)
            text += begin + " -a '(__fish_complete_directories)'\n";
    }
    return text;
}

} // namespace

std::string BashCompletion(const CLI::App& program) {
    std::string commands, values;
    ForEachCommand(program, [&](const CLI::App& command) {
        const std::string name = FullName(command);
        const std::string begin = name + ' ';
        std::vector<std::string> options;
        for (const OptionText& option : OptionsAt(command)) {
            std::vector<std::string> patterns;
            for (const std::string& optionName : option.names) {
                if (IsLong(optionName)) options.push_back(optionName);
                patterns.push_back(QuotedForBash(begin + optionName));
            }
            if (!option.value.empty()) values += BashValue(CLI::detail::join(patterns, " | "), option);
        }
        commands += "    " + QuotedForBash(name) +
                    ")\n"
                    "        commands=" +
                    QuotedForBash(NamesOf(CommandsOf(command))) +
                    "\n"
                    "        options=" +
                    QuotedForBash(CLI::detail::join(options, " ")) +
                    "\n"
                    "        ;;\n";
        int number = 0;
        for (const OptionText& argument : ArgumentsOf(command)) {
            const std::string place = argument.isRepeated ? QuotedForBash(begin) + "[0-9]*"
                                                          : QuotedForBash(begin + std::to_string(number++));
            values += BashValue(place, argument);
        }
    });
    return "# Completion of chartutil for bash, written by 'chartutil help --install'.\n"
           "\n"
           "# Sets what may stand behind a command.\n"
           "_chartutil_command() {\n"
           "    case $1 in\n" +
           commands +
           "    esac\n"
           "}\n"
           "\n"
           "# Sets what an option's value or an argument, by its number, is; \"kind\" is empty for none.\n"
           "_chartutil_value() {\n"
           "    kind='' words=''\n"
           "    case $1 in\n" +
           values +
           "    esac\n"
           "}\n" +
           kBashWalk;
}

std::string ZshCompletion(const CLI::App& program) {
    std::string text = "#compdef chartutil\n"
                       "# Completion of chartutil for zsh, written by 'chartutil help --install'.\n";
    ForEachCommand(program, [&](const CLI::App& command) { text += ZshFunctionText(command); });
    return text + "\n_chartutil \"$@\"\n";
}

std::string FishCompletion(const CLI::App& program) {
    std::string text = "# Completion of chartutil for fish, written by 'chartutil help --install'.\n";
    text += kFishCondition;
    ForEachCommand(program, [&](const CLI::App& command) { text += FishLines(command); });
    return text;
}
