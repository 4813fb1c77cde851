// SPDX-License-Identifier: MIT
#include "UtilityDLL/runtime/PlotErrorReporter.h"
#include "apps/chartutil/commands/AddCommand.h"
#include "apps/chartutil/commands/Commands.h"
#include "apps/chartutil/commands/PlotErrors.h"
#include "apps/chartutil/commands/text/Output.h"
#include "apps/chartutil/sheet/Sheet.h"
#include "apps/chartutil/terminal/Columns.h"
#include "apps/chartutil/terminal/Errors.h"
#include "apps/chartutil/terminal/Json.h"
#include "apps/chartutil/terminal/Numbers.h"
#include "apps/chartutil/terminal/ValueNames.h"

#include <iostream>
#include <nlohmann/json.hpp>

namespace {

struct Options {
    UserText folder;
    bool json = false;

    bool IsLong() const { return true; }
};

std::string ListText(const std::vector<double>& numbers) {
    std::string text;
    for (const double number : numbers) text += (text.empty() ? "" : ", ") + GeneralText(number);
    return text.empty() ? "none" : text;
}

void Print(const ProjectSummary& project) {
    const auto row = [](const char* name, const std::string& value) {
        std::cout << Padded(name, 18) << "  " << InOneLine(value) << '\n';
    };
    row("title", project.title);
    row("soundings", std::to_string(project.soundings));
    row("depths", GeneralText(project.shoalest) + " to " + GeneralText(project.deepest) + " m");
    row("from", DecimalText(project.west, 1) + ", " + DecimalText(project.south, 1));
    row("to", DecimalText(project.east, 1) + ", " + DecimalText(project.north, 1));
    row("coordinate system", project.systemDefinition.empty()
                                 ? "none, so there is no graticule"
                                 : project.systemDefinition + " (" + project.systemName + ")");
    row("paper", GeneralText(project.paperWidth) + " x " + GeneralText(project.paperHeight) + " mm");
    row("scale", "1 : " + DecimalText(project.scale, 0));
    row("levels", ListText(project.levels));
    row("colours from", ListText(project.colors));
    for (const UserText& file : project.files) row("file", file.Utf8());
}

void PrintAsJson(const UserText& folder, const ProjectSummary& project) {
    Json files = Json::array(), faults = Json::array();
    for (const UserText& file : project.files) files.push_back(file.Utf8());
    for (const std::wstring& context : PlotErrorReporter::Get().GetContexts())
        for (const ErrorString& error : PlotErrorReporter::Get()[context])
            faults.push_back({{"part", ToUtf8(context)}, {"text", ToUtf8(error.Text())}});
    PrintJson({{"project", folder.Utf8()},
               {"title", project.title},
               {"files", std::move(files)},
               {"soundings", project.soundings},
               {"depths", {{"shoalest", project.shoalest}, {"deepest", project.deepest}}},
               {"extents",
                {{"west", project.west},
                 {"south", project.south},
                 {"east", project.east},
                 {"north", project.north}}},
               {"coordinateSystem",
                project.systemDefinition.empty()
                    ? Json()
                    : Json{{"definition", project.systemDefinition}, {"name", project.systemName}}},
               {"paper", {{"width", project.paperWidth}, {"height", project.paperHeight}}},
               {"scale", project.scale},
               {"levels", project.levels},
               {"colors", project.colors},
               {"faults", std::move(faults)}});
}

void Run(const Options& options) {
    ForgetPlotErrors();
    const ProjectSummary project = CheckProject(options.folder);
    options.json ? PrintAsJson(options.folder, project) : Print(project);
    ReportPlotErrors();
}

} // namespace

void AddCheckCommand(CLI::App& program) {
    const auto [command, options] = AddCommand<Options>(
        program, "check", "Check the project of a chart, and tell what is in it", Run,
        R"(Lists what is wrong with file, line and key, and what to do. The exit code is 1 when there is anything.

Examples:
  chartutil check data/pensacola
  chartutil check data/pensacola --json)");
    command.add_option("PROJECT", options.folder, "The project's folder")
        ->type_name(kFolderValue)
        ->required();
    command.add_flag("--json", options.json, "Print a JSON document");
}
