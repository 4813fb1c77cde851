// SPDX-License-Identifier: MIT
#pragma once

#include "VelmBase/ColorTable.h"
#include "apps/chartutil/terminal/UserText.h"

#include <string>
#include <vector>

/// A colour palette table (.cpt) as a colour table, and what of it has no place there.
struct CptTable {
    ColorTable colors;
    std::vector<std::string> remarks;
};

/// Reads a .cpt file: slices "z0 colour z1 colour", also with three separate components, categories "z
/// colour", and the lines B, F and N. A colour is r/g/b, h-s-v, #rrggbb, a grey from 0 to 255, three
/// components by the model of the "COLOR_MODEL" comment, or one of the names that the tables of common use
/// have.
///
/// A slice whose colours differ is cut into bands that differ by at most `step` in red, green or blue; each
/// has the colour of its middle. B becomes the default colour and F a band from the last value on. Values
/// from 0 to 1, or -1 to 1, are stretched to the "RANGE" comment where there is one.
///
/// Throws a CommandError that names the file and the line.
CptTable ReadCptFile(const UserText& path, int step);
