// SPDX-License-Identifier: MIT
#pragma once

#include "apps/chartutil/drawing/PictureFile.h"

namespace CLI {
class App;
class Option;
} // namespace CLI

/// Adds the options of a picture: `name` for its file, "--format" and "--force".
CLI::Option* AddPicture(CLI::App& command, const char* name, PictureTarget& picture, const char* what);
