// SPDX-License-Identifier: MIT
#include "apps/chartutil/commands/AddCommand.h"
#include "apps/chartutil/commands/Commands.h"
#include "apps/chartutil/commands/contours/ContourDialog.h"
#include "apps/chartutil/commands/contours/ContourFile.h"
#include "apps/chartutil/files/Files.h"
#include "apps/chartutil/terminal/Errors.h"
#include "apps/chartutil/terminal/ValueNames.h"

namespace {

// What the dialog would only tell at its end, when the user has done the work.
void RequireEditable(const UserText& file) {
    if (file.Empty()) ThrowNotReadable(file, std::make_error_code(std::errc::no_such_file_or_directory));
    if (PathExists(file)) {
        OpenContours(file);
        return;
    }
    const std::filesystem::path folder = NativePath(file).parent_path();
    std::error_code ignored;
    if (!folder.empty() && !std::filesystem::is_directory(folder, ignored))
        throw CommandError(ExitCode::IO_ERROR,
                           file.Utf8() +
                               ": the folder of this file is not there; make it, or check the path");
}

void Edit(const std::optional<UserText>& file) {
    if (file) RequireEditable(*file);
    if (const ErrorString done = ShowContourDialog(file ? file->Wide() : std::wstring()); !done)
        throw CommandError(ExitCode::IO_ERROR, ToUtf8(done.Text()));
}

} // namespace

void AddEditCommand(CLI::App& program) {
    CLI::App& command = *program.add_subcommand("edit", "Edit a contour definition file in a dialog");
    const auto file = std::make_shared<std::optional<UserText>>();
    AddOptional(command, "FILE", *file, "The contour definition file (.cdf); without it a new one")
        ->type_name(kFileValue);
    command.footer(
        R"(OK saves the file, under its name with the extension .cdf, and makes one that is not there yet;
without FILE the dialog asks where to save. Cancel and Escape write nothing; the exit code is 0 all
the same. Ctrl-C in the terminal ends the program with the file as it was.

The dialog needs a display: a graphical session on Linux. The exit code is 3 where there is none, and
when OK could not save.

Examples:
  chartutil edit pensacola-bay.cdf
  chartutil edit)");
    // Not as work that stops when it looks for Ctrl-C next: while the dialog waits for the user it looks at
    // nothing, and a program that is ended at once leaves no file half written either.
    command.callback([file] { Edit(*file); });
}
