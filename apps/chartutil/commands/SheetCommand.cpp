// SPDX-License-Identifier: MIT
#include "apps/chartutil/commands/AddCommand.h"
#include "apps/chartutil/commands/Commands.h"
#include "apps/chartutil/commands/OutputOptions.h"
#include "apps/chartutil/commands/PlotErrors.h"
#include "apps/chartutil/files/StandardStreams.h"
#include "apps/chartutil/sheet/Sheet.h"
#include "apps/chartutil/terminal/Console.h"
#include "apps/chartutil/terminal/Errors.h"
#include "apps/chartutil/terminal/ValueNames.h"

#include <iostream>

namespace {

struct SheetOptions {
    UserText project;
    PictureTarget output;
    bool hasDxfColors = false;
    bool isWatched = false;

    bool IsLong() const { return true; }
};

void Draw(const SheetOptions& options) {
    ForgetPlotErrors();
    SavePicture(DrawSheet(options.project, options.hasDxfColors ? SheetColors::DXF : SheetColors::TABLE),
                options.output);
}

// What is wrong is for the user to mend, while the watching goes on.
void DrawAgain(const SheetOptions& options) {
    try {
        Draw(options);
        std::cout << "drawn: " << Printable(options.output.path.Utf8()) << std::endl;
    } catch (const CommandError& error) {
        PrintError(error);
    }
    (void)PrintPlotErrors();
}

void Run(const SheetOptions& options) {
    if (options.isWatched && IsStandardStream(options.output.path))
        throw CommandError(ExitCode::WRONG_USE,
                           "standard output takes one chart; name a file that --watch draws again");
    RequireOtherFile(options.project, options.output.path);
    RequirePicture(options.output);
    if (options.isWatched) WatchProject(options.project, [&] { DrawAgain(options); });
    Draw(options);
    ReportPlotErrors();
}

} // namespace

void AddSheetCommand(CLI::App& program) {
    const auto [command, options] = AddCommand<SheetOptions>(
        program, "sheet", "Draw the chart of a project", Run,
        R"(A project is a folder with the file project.ini, which says what the chart shows and how; 'chartutil
init' makes one. The sheet is drawn without what is wrong in it; that is listed with file, line and key, and
the exit code is 1.

Examples:
  chartutil sheet data/pensacola -o pensacola.svg
  chartutil sheet data/pensacola -o pensacola.pdf --watch)");
    command.add_option("PROJECT", options.project, "The project's folder")
        ->type_name(kFolderValue)
        ->required();
    AddPicture(command, "-o,--output", options.output, "The picture")->required();
    command.add_flag("--dxf-colors", options.hasDxfColors, "Fill the depth areas in the nearest DXF colours");
    command.add_flag("--watch", options.isWatched,
                     "Draw again each time that one of the project's files was saved; Ctrl-C ends it");
}
