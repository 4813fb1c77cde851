// SPDX-License-Identifier: MIT
#pragma once

#include "apps/chartutil/drawing/Surface.h"
#include "apps/chartutil/terminal/UserText.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

// What commands know of sheets. A program that was built without GDAL ends each of these by a CommandError
// that says so (none/).

enum class SheetColors {
    TABLE, ///< the surface in the colours of the project's table
    DXF,   ///< in the DXF colours nearest to them
};

/// Draws the chart of a project folder. What it was drawn without is in the PlotErrorReporter afterwards, by
/// the part of the chart that it is about; each names the file, the line and the key as far as there are any,
/// and what to do. Throws a CommandError where nothing can be drawn: there is no project, no soundings, no
/// paper.
Surface DrawSheet(const UserText& folder, SheetColors colors);

/// Ends the command when `output` is one of the project's own files, by whatever name.
void RequireOtherFile(const UserText& folder, const UserText& output);

/// What a project shows, for its user. Texts are UTF-8.
struct ProjectSummary {
    std::string title;
    std::vector<UserText> files; ///< the settings and what they name
    std::uint64_t soundings = 0;
    double shoalest = 0, deepest = 0;                ///< metres, positive down
    double west = 0, south = 0, east = 0, north = 0; ///< of the soundings, in the chart's coordinates
    std::string systemDefinition, systemName;        ///< empty where there is none
    double paperWidth = 0, paperHeight = 0;          ///< mm
    double scale = 0;                                ///< 1 to this
    std::vector<double> levels, colors;              ///< metres
};

/// Reads all that DrawSheet() would, and reports in the same manner, without drawing.
ProjectSummary CheckProject(const UserText& folder);

/// What subscribers of the context with a project folder's name hear when it has changed (see UTL::Observer).
constexpr int kProjectChanged = 1;

/// Calls `redraw`, and again each time that one of the project's files was saved, together with the other
/// subscribers of its context. Ends by Interrupted when the work is asked to stop, and at the beginning when
/// there is no project.
[[noreturn]] void WatchProject(const UserText& folder, const std::function<void()>& redraw);

/// A project that is to be made.
struct NewProject {
    UserText folder;
    UserText soundings;      ///< their file; empty for a project that is to be filled in
    std::string x, y, depth; ///< columns of a table: names, or numbers from 1; empty for the usual names
    std::string system;      ///< coordinate system of the file; empty for what it says or looks like
};

/// Makes a project folder for a file of soundings, with settings that suit them. Throws a CommandError when
/// there is a project already, and where the soundings cannot be read. Returns the files that were made.
std::vector<UserText> MakeProject(const NewProject& project);
