#include "UtilityDLL/keywords/Keywords.h"
#include "UtilityDLL/keywords/ListKeywords.h"
#include "UtilityDLL/keywords/Placeholders.h"
#include "UtilityDLL/settings/IniFile.h"
#include "VelmBase/File.h"
#include "VelmBase/WideString.h"
#include "VelmConfigure/DataSearch.h"
#include "apps/chartutil/commands/Commands.h"
#include "apps/chartutil/files/LayoutFile.h"
#include "apps/chartutil/terminal/ColorText.h"
#include "apps/chartutil/terminal/Console.h"
#include "apps/chartutil/terminal/Errors.h"
#include "apps/chartutil/terminal/Json.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <ctime>
#include <iostream>
#include <map>
#include <memory>

namespace {

using Json = nlohmann::ordered_json;

constexpr int kKeywordsCategory = 23;

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

// --- list ---

void List(const std::string& path, bool isLatin1, bool json) {
    const Layout layout = ReadLayout(path, isLatin1);
    CKeywords keywords;
    keywords.AddKeywordsInString(layout.text);
    std::map<std::wstring, std::vector<std::size_t>, std::less<>> lines;
    bool hasWrapped = false;
    LineCounter counter(layout.text);
    for (Placeholders walk(layout.text); walk.Next();) {
        lines[std::wstring(walk.Name())].push_back(counter.LineOf(walk.Begin()));
        hasWrapped = hasWrapped || walk.IsWrapped();
    }

    Json entries = Json::array();
    constexpr std::size_t kWidestName = 40; // a longer one moves the rest of its line only
    std::size_t width = 7;
    for (int i = 0; i < keywords.GetSize(); ++i)
        width = std::max(width, std::min(keywords.GetKeywordConst(i)->name.size(), kWidestName));
    if (!json && keywords.GetSize() > 0)
        std::cout << Colored("count  keyword" + std::string(width - 7, ' ') + "  kind                  lines",
                             TextColor::BOLD)
                  << '\n';
    for (int i = 0; i < keywords.GetSize(); ++i) {
        const CKeyword& keyword = *keywords.GetKeywordConst(i);
        const std::string kind = KindOf(keyword.name);
        const CListKeyword* const choices = CListKeywords::Get().GetListKeyword(keyword.name);
        const std::vector<std::size_t>& where = lines[keyword.name];
        if (json) {
            Json values = Json::array();
            for (int k = 0; choices && k < choices->GetSize(); ++k)
                values.push_back(ToUtf8(choices->GetValue(k)));
            entries.push_back({{"name", ToUtf8(keyword.name)},
                               {"count", keyword.refCount},
                               {"predefined", kind != "own"},
                               {"kind", kind},
                               {"lines", where},
                               {"choices", values}});
            continue;
        }
        const std::string count = std::to_string(keyword.refCount);
        std::cout << std::string(count.size() < 5 ? 5 - count.size() : 0, ' ') << count << "  "
                  << Printable(ToUtf8(keyword.name))
                  << std::string(width - std::min(width, keyword.name.size()), ' ') << "  "
                  << Colored(kind, kind == "own" ? TextColor::PLAIN : TextColor::GREEN)
                  << std::string(20 - kind.size(), ' ') << "  ";
        for (std::size_t k = 0; k < where.size() && k < 10; ++k) std::cout << (k ? "," : "") << where[k];
        if (where.size() > 10) std::cout << ",...";
        if (choices) std::cout << "  (" << choices->GetSize() << " choices)";
        std::cout << '\n';
    }
    if (json) PrintJson({{"file", path}, {"keywords", entries}});
    if (!json && keywords.GetSize() == 0) std::cout << Printable(path) << ": no keywords\n";
    if (hasWrapped)
        PrintNote(
            "chartutil: note: a name that begins on an earlier line is there; a single percent sign can "
            "cause that, write \"%%\" for it");
}

// --- fill ---

struct FillOptions {
    std::string layout, project, output;
    std::string section = "Keywords";
    std::vector<std::string> values;
    bool isLatin1 = false;
};

using Values = std::map<std::wstring, std::wstring>;

std::wstring NowAs(const char* format) {
    const std::time_t now = std::time(nullptr);
    char text[32];
    return FromUtf8({text, std::strftime(text, sizeof text, format, std::localtime(&now))});
}

// What is known of itself, then what the project file has, then what the user gave; the last one counts.
Values CollectValues(const FillOptions& options) {
    Values values;
    values[L"current date"] = NowAs("%Y-%m-%d");
    values[L"current time"] = NowAs("%H:%M");
    values[L"plot name"] = GetTitleFromPath(FromUtf8(options.layout));
    if (!options.project.empty()) {
        values[L"plot project"] = GetTitleFromPath(FromUtf8(options.project));
        IniFile file;
        if (const ErrorString result = file.Open(FromUtf8(options.project)); !result)
            throw CommandError(ExitCode::IO_ERROR, options.project + ": " + ToUtf8(result.Text()) +
                                                       " Name a settings file that can be read.");
        if (!file.HasSection(FromUtf8(options.section)))
            throw CommandError(ExitCode::CHECK_FAILED, options.project + ": there is no section [" +
                                                           options.section +
                                                           "]; '--section' names the one with the keywords");
        CKeywords project;
        project.Read(file[FromUtf8(options.section)]);
        for (int i = project.GetSize() - 1; i >= 0;
             --i) { // backwards: of keys with one name the first counts
            const CKeyword& keyword = *project.GetKeywordConst(i);
            if (!keyword.name.empty()) values[keyword.name] = keyword.value;
        }
    }
    for (const std::string& given : options.values) {
        const std::size_t equals = given.find('=');
        if (equals == std::string::npos || equals == 0)
            throw CommandError(ExitCode::WRONG_USE,
                               "'" + given + "' gives no keyword a value; write it as --value 'NAME=VALUE'");
        values[FromUtf8(given.substr(0, equals))] = FromUtf8(given.substr(equals + 1));
    }
    return values;
}

// Notes on what is given but of no use, or not one of the choices offered.
void CheckValues(const FillOptions& options, const CKeywords& layout, const Values& values) {
    for (const std::string& given : options.values) {
        const std::wstring name = FromUtf8(given.substr(0, given.find('=')));
        if (!layout.GetKeywordConst(name))
            PrintNote(options.layout + ": note: there is no keyword " + Quoted(name) + " to be filled");
        const CListKeyword* const choices = CListKeywords::Get().GetListKeyword(name);
        if (!choices) continue;
        bool isChoice = false;
        for (int i = 0; i < choices->GetSize(); ++i)
            isChoice = isChoice || choices->GetValue(i) == values.at(name);
        if (!isChoice)
            PrintNote(options.layout + ": note: " + Quoted(values.at(name)) + " is none of the choices for " +
                      Quoted(name));
    }
}

void Fill(const FillOptions& options) {
    const Layout layout = ReadLayout(options.layout, options.isLatin1);
    const Values values = CollectValues(options);
    CKeywords keywords;
    keywords.AddKeywordsInString(layout.text);
    CheckValues(options, keywords, values);

    std::wstring filled;
    std::size_t done = 0;
    std::size_t unknown = 0;
    LineCounter counter(layout.text);
    for (Placeholders walk(layout.text); walk.Next();) {
        const std::wstring name(walk.Name());
        const auto known = walk.IsWrapped() ? values.end() : values.find(name);
        const std::string place = options.layout + ":" + std::to_string(counter.LineOf(walk.Begin())) + ": ";
        if (known == values.end()) {
            ++unknown;
            if (walk.IsWrapped())
                PrintNote(place + "the keyword " + Quoted(name) +
                          " begins on an earlier line and stays; keep a name on one line, and write \"%%\" "
                          "for a percent sign");
            else
                PrintNote(place + "no value for the keyword " + Quoted(name) + "; give one with --value '" +
                          ToUtf8(name) + "=...' or in the project file");
            continue;
        }
        const auto isTooHigh = [](wchar_t c) { return static_cast<std::make_unsigned_t<wchar_t>>(c) > 0xFF; };
        if (layout.isLatin1 && std::any_of(known->second.begin(), known->second.end(), isTooHigh))
            throw CommandError(ExitCode::CHECK_FAILED,
                               place + "the value of " + Quoted(name) +
                                   " has a character that this layout, one byte a character, cannot hold");
        filled.append(layout.text, done, walk.Begin() - done);
        filled += known->second;
        done = walk.End();
    }
    filled.append(layout.text, done);

    const std::string bytes = Encoded(filled, layout.isLatin1);
    if (options.output.empty())
        std::cout.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    else if (!FILES::ReplaceContents(FromUtf8(options.output), bytes))
        throw CommandError(ExitCode::IO_ERROR,
                           options.output +
                               ": cannot be written; check that the folder exists and takes new files");
    if (unknown > 0) throw CommandExit{ExitCode::CHECK_FAILED};
}

} // namespace

void AddKeywordsCommand(CLI::App& program) {
    CLI::App* keywords =
        program.add_subcommand("keywords", "Keywords of plot layouts: '%project name%' and others");
    keywords->require_subcommand(1);
    struct Options : FillOptions {
        std::string data;
        bool json = false;
    };
    const auto options = std::make_shared<Options>();
    const auto addCommon = [&](CLI::App* command) {
        command
            ->add_option("LAYOUT", options->layout, "A text or layout file with names between percent signs")
            ->required();
        command->add_flag(
            "--latin-1", options->isLatin1,
            "The layout is one byte a character, as settings files are; so is any that is no UTF-8");
        command->add_option("--data", options->data,
                            "The folder with the file 'Keywords' that lists choices");
    };
    const auto prepare = [options] {
        if (!options->data.empty())
            DataSearch::GetDataSearch().SetFolder(kKeywordsCategory, FromUtf8(options->data));
    };

    CLI::App* list = keywords->add_subcommand("list", "The keywords of a layout and how often each occurs");
    addCommon(list);
    list->add_flag("--json", options->json, "Print a JSON document");
    list->footer("Predefined keywords are those that the application fills in by itself.\n\nExamples:\n"
                 "  chartutil keywords list title-block.txt\n"
                 "  chartutil keywords list title-block.txt --data /usr/share/utilitydll --json");
    list->callback([=] {
        prepare();
        List(options->layout, options->isLatin1, options->json);
    });

    CLI::App* fill = keywords->add_subcommand("fill", "Fill the keywords of a layout with their values");
    addCommon(fill);
    fill->add_option("--value", options->values, "A keyword's value; can be given again for others")
        ->type_name("NAME=VALUE")
        ->allow_extra_args(false);
    fill->add_option("--project", options->project, "A settings file whose section 'Keywords' has values");
    fill->add_option("--section", options->section, "Another section of the project file")
        ->capture_default_str();
    fill->add_option("-o,--output", options->output, "Write the filled text into this file");
    fill->footer(
        "Known without being told: 'current date', 'current time', 'plot name' (the layout file's name)\n"
        "and, with a project file, 'plot project' (that file's name). What the project file says counts\n"
        "more, and --value most. A keyword without a value stays in the text, is named with its line on\n"
        "standard error, and makes the exit code 1.\n\nExamples:\n"
        "  chartutil keywords fill title-block.txt --project pensacola-bay.ini\n"
        "  chartutil keywords fill title-block.txt --value 'project name=Bay' --value 'plot name=Sheet 1' "
        "-o out.txt");
    fill->callback([=] {
        prepare();
        Fill(*options);
    });
}
