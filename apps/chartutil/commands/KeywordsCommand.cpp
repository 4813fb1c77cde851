// SPDX-License-Identifier: MIT
#include "UtilityDLL/keywords/Keywords.h"
#include "UtilityDLL/keywords/ListKeywords.h"
#include "UtilityDLL/keywords/Placeholders.h"
#include "VelmConfigure/DataSearch.h"
#include "apps/chartutil/commands/AddCommand.h"
#include "apps/chartutil/commands/Commands.h"
#include "apps/chartutil/files/FileKind.h"
#include "apps/chartutil/files/Files.h"
#include "apps/chartutil/files/LayoutFile.h"
#include "apps/chartutil/files/SettingsFile.h"
#include "apps/chartutil/files/StandardStreams.h"
#include "apps/chartutil/terminal/ColorText.h"
#include "apps/chartutil/terminal/Columns.h"
#include "apps/chartutil/terminal/Console.h"
#include "apps/chartutil/terminal/Errors.h"
#include "apps/chartutil/terminal/Json.h"
#include "apps/chartutil/terminal/ValueNames.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <ctime>
#include <iostream>
#include <map>
#include <string>
#include <vector>

namespace {

// The line of a position that only moves on.
class LineCounter {
public:
    explicit LineCounter(std::wstring_view text) : m_text(text) {}
    std::size_t LineOf(std::size_t position) {
        for (; m_position < position; ++m_position) m_line += m_text[m_position] == L'\n';
        return m_line;
    }

private:
    std::wstring_view m_text;
    std::size_t m_position = 0;
    std::size_t m_line = 1;
};

std::string Quoted(std::wstring_view name) { return "'" + ToUtf8(name) + "'"; }

const char* KindOf(const std::wstring& name) {
    if (CKeywords::IsPredefinedKeyword(name)) return "predefined";
    return CKeywords::IsPredefinedPlotKeyword(name) ? "predefined for plots" : "own";
}

// The options of both commands.
struct Options {
    UserText layout, data;
    bool isLatin1 = false;
};

void UseData(const Options& options) {
    if (!options.data.Empty())
        DataSearch::GetDataSearch().SetFolder(DataSearch::CHOICE_LISTS, options.data.Wide());
}

// --- list ---

struct ListOptions : Options {
    bool json = false;
};

// The lines on which each name is found, and whether one of them begins on an earlier line.
struct Occurrences {
    explicit Occurrences(const std::wstring& text) {
        LineCounter counter(text);
        for (Placeholders walk(text); walk.Next();) {
            lines[std::wstring(walk.Name())].push_back(counter.LineOf(walk.Begin()));
            hasWrapped = hasWrapped || walk.IsWrapped();
        }
    }
    std::map<std::wstring, std::vector<std::size_t>, std::less<>> lines;
    bool hasWrapped = false;
};

Json ToJson(const CKeyword& keyword, const std::vector<std::size_t>& lines) {
    const CListKeyword* const choices = CListKeywords::Get().GetListKeyword(keyword.name);
    Json values = Json::array();
    for (int k = 0; choices && k < choices->GetSize(); ++k) values.push_back(ToUtf8(choices->GetValue(k)));
    const std::string kind = KindOf(keyword.name);
    return {{"name", ToUtf8(keyword.name)},
            {"count", keyword.refCount},
            {"predefined", kind != "own"},
            {"kind", kind},
            {"lines", lines},
            {"choices", values}};
}

void Print(const CKeyword& keyword, const std::vector<std::size_t>& lines, std::size_t width) {
    const std::string kind = KindOf(keyword.name);
    std::cout << Padded(std::to_string(keyword.refCount), 5, Align::RIGHT) << "  "
              << Printable(Padded(ToUtf8(keyword.name), width)) << "  "
              << Colored(kind, kind == "own" ? TextColor::PLAIN : TextColor::GREEN)
              << std::string(20 - kind.size(), ' ') << "  ";
    for (std::size_t k = 0; k < lines.size() && k < 10; ++k) std::cout << (k ? "," : "") << lines[k];
    if (lines.size() > 10) std::cout << ",...";
    if (const CListKeyword* const choices = CListKeywords::Get().GetListKeyword(keyword.name))
        std::cout << "  (" << choices->GetSize() << " choices)";
    std::cout << '\n';
}

void PrintTable(const CKeywords& keywords, Occurrences& found) {
    constexpr std::size_t kWidestName = 40; // a longer one moves the rest of its line only
    std::size_t width = 7;
    for (int i = 0; i < keywords.GetSize(); ++i)
        width = std::max(width, std::min(TextWidth(ToUtf8(keywords.GetKeywordConst(i)->name)), kWidestName));
    std::cout << Colored("count  " + Padded("keyword", width) + "  kind                  lines",
                         TextColor::BOLD)
              << '\n';
    for (int i = 0; i < keywords.GetSize(); ++i) {
        const CKeyword& keyword = *keywords.GetKeywordConst(i);
        Print(keyword, found.lines[keyword.name], width);
    }
}

void Run(const ListOptions& options) {
    UseData(options);
    const Layout layout = ReadLayout(options.layout, options.isLatin1);
    CKeywords keywords;
    keywords.AddKeywordsInString(layout.text);
    Occurrences found(layout.text);
    if (options.json) {
        Json entries = Json::array();
        for (int i = 0; i < keywords.GetSize(); ++i) {
            const CKeyword& keyword = *keywords.GetKeywordConst(i);
            entries.push_back(ToJson(keyword, found.lines[keyword.name]));
        }
        PrintJson({{"file", options.layout.Utf8()}, {"keywords", std::move(entries)}});
    } else if (keywords.GetSize() > 0) {
        PrintTable(keywords, found);
    } else {
        std::cout << Printable(InputName(options.layout)) << ": no keywords\n";
    }
    if (found.hasWrapped)
        PrintNote(
            "chartutil: note: a name that begins on an earlier line is there; a single percent sign can "
            "cause that, write \"%%\" for it");
}

// --- fill ---

struct FillOptions : Options {
    UserText project, output;
    bool isForced = false;
    UserText section = "Keywords";
    std::vector<UserText> values; // as NAME=VALUE
};

using Values = std::map<std::wstring, std::wstring>;

std::wstring NowAs(const char* format) {
    const std::time_t now = std::time(nullptr);
    char text[32];
    return FromUtf8({text, std::strftime(text, sizeof text, format, std::localtime(&now))});
}

std::wstring NameIn(const UserText& given) { return given.Wide().substr(0, given.Wide().find(L'=')); }

void AddFromProject(const FillOptions& options, Values& values) {
    values[L"plot project"] = GetTitleFromPath(options.project.Wide());
    IniFile file = OpenSettings(options.project);
    CKeywords project;
    (void)project.Read(RequireSection(file, options.project, options.section));
    // Backwards: of keys with one name the first counts.
    for (int i = project.GetSize() - 1; i >= 0; --i) {
        const CKeyword& keyword = *project.GetKeywordConst(i);
        if (!keyword.name.empty()) values[keyword.name] = keyword.value;
    }
}

// What is known of itself, then what the project file has, then what the user gave; the last one counts.
Values CollectValues(const FillOptions& options) {
    Values values;
    values[L"current date"] = NowAs("%Y-%m-%d");
    values[L"current time"] = NowAs("%H:%M");
    values[L"plot name"] = GetTitleFromPath(options.layout.Wide());
    if (!options.project.Empty()) AddFromProject(options, values);
    for (const UserText& given : options.values) {
        const std::wstring name = NameIn(given);
        if (name.empty() || name.size() == given.Wide().size())
            throw CommandError(ExitCode::WRONG_USE, "'" + given.Utf8() +
                                                        "' gives no keyword a value; write it as --value "
                                                        "'NAME=VALUE'");
        values[name] = given.Wide().substr(name.size() + 1);
    }
    return values;
}

// Notes on what is given but of no use, or not one of the choices offered.
void CheckValues(const FillOptions& options, const CKeywords& layout, const Values& values) {
    for (const UserText& given : options.values) {
        const std::wstring name = NameIn(given);
        const std::string note = InputName(options.layout) + ": note: ";
        if (!layout.GetKeywordConst(name))
            PrintNote(note + "there is no keyword " + Quoted(name) + " to be filled");
        const CListKeyword* const choices = CListKeywords::Get().GetListKeyword(name);
        if (!choices) continue;
        bool isChoice = false;
        for (int i = 0; i < choices->GetSize(); ++i)
            isChoice = isChoice || choices->GetValue(i) == values.at(name);
        if (!isChoice)
            PrintNote(note + Quoted(values.at(name)) + " is none of the choices for " + Quoted(name));
    }
}

// The layout's text with its keywords filled. Those that stay are named on standard error and counted.
std::wstring Filled(const Layout& layout, const std::string& path, const Values& values, int& numLeft) {
    const auto isTooHigh = [](wchar_t c) { return static_cast<std::make_unsigned_t<wchar_t>>(c) > 0xFF; };
    std::wstring filled;
    std::size_t done = 0;
    LineCounter counter(layout.text);
    for (Placeholders walk(layout.text); walk.Next();) {
        const std::wstring name(walk.Name());
        const auto known = walk.IsWrapped() ? values.end() : values.find(name);
        const std::string place = path + ":" + std::to_string(counter.LineOf(walk.Begin())) + ": ";
        if (known == values.end()) {
            ++numLeft;
            if (walk.IsWrapped())
                PrintError(place + "the keyword " + Quoted(name) +
                           " begins on an earlier line and stays; keep a name on one line, and write \"%%\" "
                           "for a percent sign");
            else
                PrintError(place + "no value for the keyword " + Quoted(name) + "; give one with --value '" +
                           ToUtf8(name) + "=...' or in the project file");
            continue;
        }
        if (layout.isLatin1 && std::any_of(known->second.begin(), known->second.end(), isTooHigh))
            throw CommandError(ExitCode::CHECK_FAILED,
                               place + "the value of " + Quoted(name) +
                                   " has a character that this layout, one byte a character, cannot hold");
        filled.append(layout.text, done, walk.Begin() - done);
        filled += known->second;
        done = walk.End();
    }
    return filled.append(layout.text, done);
}

void Run(const FillOptions& options) {
    UseData(options);
    const Layout layout = ReadLayout(options.layout, options.isLatin1);
    if (!options.output.Empty())
        RequireReplaceable(options.output, KindOfText(Encoded(layout.text, layout.isLatin1)),
                           options.isForced);
    const Values values = CollectValues(options);
    CKeywords keywords;
    keywords.AddKeywordsInString(layout.text);
    CheckValues(options, keywords, values);

    int numLeft = 0;
    const std::wstring filled = Filled(layout, InputName(options.layout), values, numLeft);
    if (!options.output.Empty())
        WriteFile(options.output, Encoded(filled, layout.isLatin1));
    else if (OutputIsTerminal())
        std::cout << WithoutControls(ToUtf8(filled));
    else
        std::cout << Encoded(filled, layout.isLatin1);
    if (numLeft > 0) throw CommandExit{ExitCode::CHECK_FAILED};
}

// --- the command line ---

void AddLayout(CLI::App& command, Options& options) {
    command
        .add_option("LAYOUT", options.layout,
                    "A text or layout file with names between percent signs; '-' is standard input")
        ->type_name(kFileValue)
        ->required();
    command.add_flag("--latin-1", options.isLatin1,
                     "The layout is one byte a character, as settings files are; so is any that is no UTF-8");
    command.add_option("--data", options.data, "The folder with the file 'Keywords' that lists choices")
        ->type_name(kFolderValue);
}

void AddList(CLI::App& keywords) {
    const auto [command, options] =
        AddCommand<ListOptions>(keywords, "list", "The keywords of a layout and how often each occurs", Run,
                                R"(Predefined keywords are those that the application fills in by itself.

Examples:
  chartutil keywords list title-block.txt
  chartutil keywords list title-block.txt --data choices --json)");
    AddLayout(command, options);
    command.add_flag("--json", options.json, "Print a JSON document");
}

void AddFill(CLI::App& keywords) {
    const auto [command, options] = AddCommand<FillOptions>(
        keywords, "fill", "Fill the keywords of a layout with their values", Run,
        R"(These have values of their own: 'current date', 'current time', 'plot name' (the layout file's name)
and, with a project file, 'plot project' (that file's name). What the project file says counts
more, and --value most. A keyword without a value stays in the text, is named with its line on
standard error, and makes the exit code 1.

Examples:
  chartutil keywords fill title-block.txt --project pensacola-bay.ini
  chartutil keywords fill title-block.txt --value 'project name=Bay' \
      --value 'plot name=Sheet 1' -o out.txt)");
    AddLayout(command, options);
    command.add_option("--value", options.values, "A keyword's value; can be given again for others")
        ->type_name("NAME=VALUE")
        ->allow_extra_args(false);
    command
        .add_option("--project", options.project,
                    "A settings file whose section 'Keywords' has values; '-' is standard input")
        ->type_name(kFileValue);
    command.add_option("--section", options.section, "Another section of the project file")
        ->type_name("NAME")
        ->capture_default_str();
    command.add_option("-o,--output", options.output, "Write the filled text into this file")
        ->type_name(kFileValue);
    AddForce(command, options.isForced);
}

} // namespace

void AddKeywordsCommand(CLI::App& program) {
    CLI::App& keywords =
        *program.add_subcommand("keywords", "Keywords of plot layouts: '%project name%' and others");
    keywords.require_subcommand(1);
    AddList(keywords);
    AddFill(keywords);
}
