// SPDX-License-Identifier: MIT
#include "apps/chartutil/help/HelpFormatter.h"

#include "apps/chartutil/help/OptionText.h"
#include "apps/chartutil/help/Prose.h"

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

namespace {

struct Item {
    std::string group, term, about;
};

std::vector<Item> ItemsOf(const CLI::App& command) {
    std::vector<Item> items;
    for (const OptionText& argument : ArgumentsOf(command))
        items.push_back({"Arguments", argument.Term(), argument.about});
    for (const CLI::App* const part : CommandsOf(command)) {
        const bool isGrouped = part->get_group() != "Subcommands"; // the parser's own word
        items.push_back(
            {isGrouped ? part->get_group() : "Commands", part->get_name(), part->get_description()});
    }
    for (const OptionText& option : OptionsOf(command))
        items.push_back({option.group, option.Term(), option.about});
    return items;
}

// A table for each group, with one column for all.
std::string Tables(const std::vector<Item>& items) {
    std::vector<std::string> groups, terms;
    for (const Item& item : items) {
        if (std::ranges::find(groups, item.group) == groups.end()) groups.push_back(item.group);
        terms.push_back(item.term);
    }
    const std::size_t column = ItemColumn(terms);
    std::string text;
    for (const std::string& group : groups) {
        text += '\n' + group + ":\n";
        for (const Item& item : items)
            if (item.group == group) text += ItemText(item.term, item.about, column);
    }
    return text;
}

// What every command's help says, unless it says itself what each code means.
constexpr char kExitCodes[] = R"(

Exit codes: 0 success, 1 a check failed, 2 wrong use, 3 input or output error.)";

// Further lines are under the first word behind the program's name.
std::string UsageLines(const CLI::App& command) {
    constexpr std::size_t kIndent = 4;
    const std::string lines = Wrapped("Usage: " + Usage(command), kIndent);
    return lines.substr(kIndent);
}

} // namespace

std::string HelpFormatter::make_help(const CLI::App* command, std::string, CLI::AppFormatMode) const {
    return HelpOf(*command);
}

std::string HelpOf(const CLI::App& command) {
    const std::string help = ProseText(ReadProse(command.get_description())) + '\n' + UsageLines(command) +
                             Tables(ItemsOf(command));
    std::string footer = command.get_footer();
    if (footer.find("\nExit codes: ") == std::string::npos) footer += kExitCodes;
    return help + '\n' + ProseText(ReadProse(footer));
}
