// SPDX-License-Identifier: MIT
#include "apps/chartutil/help/OptionText.h"

#include "apps/chartutil/terminal/ValueNames.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <functional>

namespace {

// "a", "b" of "{a,b}", which is how the parser writes a set of values behind the name of their type.
std::vector<std::string> ChoicesIn(const std::string& type) {
    const std::size_t start = type.find(":{");
    const std::size_t end = type.find('}', start);
    if (start == std::string::npos || end == std::string::npos) return {};
    return CLI::detail::split(type.substr(start + 2, end - start - 2), ',');
}

std::string ValueName(const std::string& type) {
    const bool isNumber = type == "INT" || type == "UINT" || type == "FLOAT";
    return isNumber ? "NUMBER" : type;
}

// The numbers that a checked option takes, in words; empty where the parser checks none.
std::string NumbersIn(const std::string& type) {
    if (type.ends_with(":NONNEGATIVE")) return "0 or more";
    const std::size_t start = type.find(" in [");
    if (start == std::string::npos) return {};
    const std::string range = type.substr(start + 5, type.find(']', start) - start - 5);
    return CLI::detail::find_and_replace(range, " - ", " to ");
}

std::string NamesOf(const std::set<CLI::Option*>& options) {
    std::vector<std::string> names;
    names.reserve(options.size());
    for (const CLI::Option* const option : options) names.push_back(option->get_name());
    std::ranges::sort(names); // a set of pointers has any order
    return CLI::detail::join(names, ", ");
}

std::string About(const CLI::Option& option) {
    std::vector<std::string> remarks;
    if (const std::string numbers = NumbersIn(option.get_type_name()); !numbers.empty())
        remarks.push_back(numbers);
    if (!option.get_default_str().empty()) remarks.push_back("default: " + option.get_default_str());
    if (!option.get_positional() && option.get_required()) remarks.emplace_back("required");
    if (!option.get_needs().empty()) remarks.push_back("only with " + NamesOf(option.get_needs()));
    if (!option.get_excludes().empty()) remarks.push_back("not with " + NamesOf(option.get_excludes()));
    std::string about = option.get_description();
    std::ranges::replace(about, '\n', ' ');
    if (!remarks.empty()) about += " (" + CLI::detail::join(remarks, "; ") + ")";
    return about;
}

OptionText TextOf(const CLI::Option& option) {
    OptionText text;
    text.isArgument = option.get_positional();
    if (text.isArgument)
        text.names = {option.get_name(true)};
    else
        text.names = CLI::detail::split(option.get_name(false, true), ',');
    const std::string type = option.get_type_name();
    const std::string name = type.substr(0, type.find(':'));
    text.takesFile = name == kFileValue;
    text.takesFolder = name == kFolderValue;
    if (!text.isArgument && option.get_items_expected_max() > 0) text.value = ValueName(name);
    text.about = About(option);
    text.group = option.get_group();
    text.choices = ChoicesIn(type);
    text.isRequired = option.get_required();
    text.isRepeated = option.get_expected_max() >= CLI::detail::expected_max_vector_size;
    return text;
}

std::vector<OptionText> TextsOf(const CLI::App& command, bool areArguments) {
    std::vector<OptionText> texts;
    for (const CLI::Option* const option : command.get_options())
        if (!option->get_group().empty() && option->get_positional() == areArguments)
            texts.push_back(TextOf(*option));
    std::stable_partition(texts.begin(), texts.end(), std::mem_fn(&OptionText::isRequired)); // comes first
    return texts;
}

} // namespace

std::string OptionText::Term() const {
    if (isArgument) return names.front() + (isRepeated ? "..." : "");
    return CLI::detail::join(names, ", ") + (value.empty() ? "" : " " + value);
}

std::vector<OptionText> ArgumentsOf(const CLI::App& command) { return TextsOf(command, true); }
std::vector<OptionText> OptionsOf(const CLI::App& command) { return TextsOf(command, false); }

std::vector<const CLI::App*> CommandsOf(const CLI::App& group) { return group.get_subcommands({}); }

std::string FullName(const CLI::App& command) {
    const CLI::App* const parent = command.get_parent();
    return (parent ? FullName(*parent) + ' ' : "") + command.get_name();
}

std::string Usage(const CLI::App& command) {
    std::string usage = FullName(command);
    if (!CommandsOf(command).empty()) return usage + " COMMAND [OPTIONS]";
    usage += " [OPTIONS]";
    for (const OptionText& argument : ArgumentsOf(command))
        usage += argument.isRequired ? ' ' + argument.Term() : " [" + argument.Term() + ']';
    return usage;
}
