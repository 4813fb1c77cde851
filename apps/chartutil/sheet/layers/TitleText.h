// SPDX-License-Identifier: MIT
#pragma once

#include "apps/chartutil/sheet/project/Project.h"
#include "apps/chartutil/sheet/scene/MapFrame.h"
#include "apps/chartutil/sheet/scene/Scene.h"

#include <string>

/// The text of the project's title block with its placeholders filled: by the project's keywords, and by what
/// the sheet knows itself where they say nothing ("sounding count", "scale", "coordinate system", "horizontal
/// datum", "projection", "plot project", "plot name"). One without a value is reported in the context "Title
/// Block", with the line of the layout, and nothing stands in its place; a line all of whose placeholders
/// have none is left out. A name does not go on in the next line: percent signs without a partner stay. Lines
/// end with LF.
std::wstring TitleText(const Project& project, const MapFrame& frame, const Scene& scene);

/// "1 : 60 000".
std::wstring ScaleText(const MapFrame& frame);
