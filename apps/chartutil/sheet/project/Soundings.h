// SPDX-License-Identifier: MIT
#pragma once

#include "apps/chartutil/sheet/geometry/Geometry.h"
#include "apps/chartutil/sheet/project/Project.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

/// Where soundings are read from. A table has a line for each sounding, with commas, semicolons, tabs or
/// blanks between its fields, and perhaps a header and lines that begin with "#". What is no table is a layer
/// of points that GDAL reads.
struct SoundingSource {
    UserText path;
    std::string layer;                         ///< empty for the first one with points
    std::string xColumn, yColumn, depthColumn; ///< names, or numbers from 1; empty for the usual names
};

/// Soundings as they stand in a file: their places in its coordinate system, and depths in its unit and
/// direction.
struct FoundSoundings {
    std::vector<Sounding> soundings;
    bool isTable = false;
    std::string layer;                         ///< of what is no table
    std::string xColumn, yColumn, depthColumn; ///< what was taken; empty without a header
    std::string system;                        ///< what the file says of its coordinate system, if anything
};

/// Takes a fault in the file and its line, from 1; 0 where there are no lines.
using TakeFault = std::function<void(std::uint64_t line, const std::string& what)>;

/// Reads them all; they take 24 bytes each. Ends the command when the file cannot be read or has none.
FoundSoundings ReadSoundings(const SoundingSource& source, const TakeFault& fault);

/// Those of a project: in its coordinate system, with depths in metres, positive down. The first faults go to
/// the PlotErrorReporter in the context "Soundings", and how many more there are. Ends the command where
/// nothing can be drawn from them.
std::vector<Sounding> ReadSoundings(const Project& project);

/// The coordinate system that suits points of this one: a zone of UTM, and for what reaches over several of
/// them a Mercator projection that is true in their middle. `points` become longitudes and latitudes.
std::string SuitableSystem(const std::string& system, std::vector<WorldPoint>& points);
