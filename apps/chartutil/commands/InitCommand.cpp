// SPDX-License-Identifier: MIT
#include "apps/chartutil/commands/AddCommand.h"
#include "apps/chartutil/commands/Commands.h"
#include "apps/chartutil/commands/PlotErrors.h"
#include "apps/chartutil/commands/text/Output.h"
#include "apps/chartutil/sheet/Sheet.h"

#include <iostream>

namespace {

struct Options {
    UserText folder, soundings;

    bool IsLong() const { return true; }
};

void Run(const Options& options) {
    ForgetPlotErrors();
    for (const UserText& file : MakeProject(options.folder, options.soundings))
        std::cout << InOneLine(file.Utf8()) << '\n';
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
  chartutil sheet harbour -o harbour.pdf)");
    command.add_option("FOLDER", options.folder, "The project's folder, which is made")->required();
    command.add_option("--soundings", options.soundings,
                       "The file of soundings; '-' is a table on standard input");
}
