#pragma once

#include "apps/chartutil/drawing/PictureFile.h"
#include "apps/chartutil/files/FileKind.h"

// Options of commands that write files; AddForce() is one of them.

/// Adds the options of a picture: `name` for its file and "--format".
CLI::Option* AddPicture(CLI::App& command, const char* name, PictureTarget& picture, const char* what);
