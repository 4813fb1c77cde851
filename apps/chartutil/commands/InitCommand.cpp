// SPDX-License-Identifier: MIT
#include "apps/chartutil/commands/AddCommand.h"
#include "apps/chartutil/commands/Commands.h"
#include "apps/chartutil/commands/PlotErrors.h"
#include "apps/chartutil/commands/text/Output.h"
#include "apps/chartutil/sheet/Sheet.h"
#include "apps/chartutil/terminal/ValueNames.h"

#include <iostream>

namespace {

struct Options {
    NewProject project;

    bool IsLong() const { return true; }
};

void Run(const Options& options) {
    ForgetPlotErrors();
    for (const UserText& file : MakeProject(options.project)) std::cout << InOneLine(file.Utf8()) << '\n';
    ReportPlotErrors();
}

} // namespace

void AddInitCommand(CLI::App& program) {
    const auto [command, options] = AddCommand<Options>(
        program, "init", "Make the project of a chart for soundings", Run,
        R"(The settings suit the soundings and explain themselves: paper, scale, levels, colours, grids and title
block. Soundings are a table (CSV, or XYZ with blanks) or a layer of points that GDAL reads (GeoPackage,
GeoJSON, S-57, Shape). They are copied into the folder, but for a layer of several files, which is named
where it is. Longitudes and latitudes are drawn in the zone of UTM that they are in. A project that is
there stays as it is.

Examples:
  chartutil init harbour --soundings survey.csv
  chartutil init weser --soundings weser.csv --x Rechtswert --y Hochwert
  chartutil sheet harbour -o harbour.pdf)");
    command.add_option("FOLDER", options.project.folder, "The project's folder, which is made")
        ->type_name(kFolderValue)
        ->required();
    CLI::Option* const soundings = command
                                       .add_option("--soundings", options.project.soundings,
                                                   "The file of soundings; '-' is a table on standard input")
                                       ->type_name(kFileValue);
    const auto addText = [&app = command, soundings](const char* name, std::string& value, const char* type,
                                                     const char* what) {
        app.add_option(name, value, what)->type_name(type)->needs(soundings);
    };
    addText("--x", options.project.x, "COLUMN",
            "The column of eastings or longitudes: a name of the table's header line, or a number from 1");
    addText("--y", options.project.y, "COLUMN", "The column of northings or latitudes");
    addText("--depth", options.project.depth, "COLUMN", "The column of depths");
    addText("--system", options.project.system, "SYSTEM",
            "The coordinate system of the soundings, as EPSG:25832, where the file does not say it");
}
